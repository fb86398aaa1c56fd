#include <QApplication>
#include <QString>
#include <mutex>

#include <sys/stat.h>

#include "app/desktop/desktop.h"
#include "views/report_printing.h"

namespace ira::desktop {

int WithPdfPainter(int& argc, char** argv, const std::function<int(PdfPainter painter)>& batch) {
  // A batch run shows no window: it must not depend on a display being there.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tallyra"));
  // The PDF is written under a private temporary name; the finished file gets
  // the mode any new file of the user's gets. Read here, before any worker
  // starts: umask() sets as it reads.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  // The printer set-up and the platform's print support are shared: one PDF at a time.
  std::mutex painting;
  return batch([&painting, mask](const std::string& path, int flags) {
    std::lock_guard lock(painting);
    if (!views::SaveReportsAsPdf(flags, QString::fromStdString(path))) return false;
    ::chmod(path.c_str(), 0666 & ~mask);
    return true;
  });
}

}  // namespace ira::desktop

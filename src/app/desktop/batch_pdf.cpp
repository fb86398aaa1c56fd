#include <QApplication>
#include <QString>
#include <mutex>

#include "app/desktop/desktop.h"
#include "views/report_printing.h"

namespace ira::desktop {

int WithPdfPainter(int& argc, char** argv, const std::function<int(PdfPainter painter)>& batch) {
  // A batch run shows no window: it must not depend on a display being there.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tallyra"));
  // The printer set-up and the platform's print support are shared: one PDF at a time.
  std::mutex painting;
  return batch([&painting](const std::string& path, int flags) {
    std::lock_guard lock(painting);
    return views::SaveReportsAsPdf(flags, QString::fromStdString(path));
  });
}

}  // namespace ira::desktop

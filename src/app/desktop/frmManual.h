// The user manual inside the program, for a desktop without a PDF viewer:
// the same Markdown chapters the printed manual is typeset from, installed
// beside the program in "manual" (pictures in "screenshots"), listed by
// their titles on the left and shown on the right.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

class QListWidget;
class QTextBrowser;

namespace ira::desktop {

// The folder of the chapters beside the program.
inline constexpr const char* kManualFolder = "manual";

// The chapter files of `folder` in their order (by name).
QStringList ManualChapters(const QString& folder);

class frmManual : public QWidget {
  Q_OBJECT
 public:
  explicit frmManual(const QStringList& chapters, QWidget* parent = nullptr);

  QListWidget* lstChapters;
  QTextBrowser* txtChapter;

  void ShowChapter(int index);

 private:
  QStringList m_chapters;
};

}  // namespace ira::desktop

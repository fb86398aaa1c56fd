// The main window: menus and a toolbar for the document commands, the input
// dialogs, the reports, the report font and the help, over an overview of
// the scenario. It keeps the current file name and whether there are
// unsaved changes; the scenario itself is the program-wide one.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/shell/commands.h"
#include "app/shell/settings.h"
#include "core/reports/display_master.h"
#include "views/qt_report_viewer.h"
#include "views/report_printing.h"

class QAction;
class QDragEnterEvent;
class QDropEvent;
class QLabel;
class QMenu;
class QToolBar;
class QTreeWidget;

namespace ira::desktop {

class frmMain : public QMainWindow {
  Q_OBJECT
 public:
  frmMain(settings::Settings settings, std::string userFolder, long startTime, QWidget* parent = nullptr);

  QToolBar* tlbMain;
  QAction* mnuNew;
  QAction* mnuOpen;
  QAction* mnuSave;
  QAction* mnuSaveAs;
  QAction* mnuPrint;
  QAction* mnuPreview;
  QAction* mnuSavePdf;
  QAction* mnuExportCalSumm;
  QAction* mnuExportProjection;
  QAction* mnuDisplay;
  QAction* mnuGeneral;
  QAction* mnuIra;
  QAction* mnuProjection;
  QAction* mnuFont;
  QAction* mnuHelp;
  QAction* mnuManualHere;
  QAction* mnuAbout;
  QAction* mnuExit;

  // A toolbar button's click: the key names the command.
  void tlbMain_ButtonClick(const QString& key);
  void Run(shell::Command command);

  // The document commands; each returns false when the user backed out or
  // the file could not be written.
  bool FileNew();
  bool FileOpen();
  bool FileSave();
  bool FileSaveAs();
  // Opens the scenario file `path` (the file given on the command line).
  bool OpenScenario(const std::string& path);
  // A recent file or a file dropped on the window: the unsaved-changes
  // question, then the file.
  bool OpenAfterAsking(const std::string& path);
  // What a drop of a .ira file on the window runs once the drop is over.
  void OpenDropped(const std::string& path);
  const std::vector<std::string>& RecentFiles() const { return m_recent; }
  QMenu* mnuRecent;
  void GetFonts();
  void OpenManual();
  // The manual's chapters in a window of the program; false when they are missing.
  bool ShowManualInProgram();
  // After an unexpected error: optionally save, then end the program.
  void ShutDown(bool save);

  // Marks the scenario as changed (any edit).
  void SetModified();
  const std::string& CurrentFile() const { return m_currentFile; }
  bool Modified() const { return m_modified; }
  const settings::Settings& Settings() const { return m_settings; }
  // Where the scenario goes when the window closes.
  std::string DebugFile() const;
  // Rereads the scenario into the overview and the command states.
  void Refresh();

  // Seams for what needs a person or the desktop; tests replace them.
  std::function<QString(bool save, const QString& folder)> ChooseFile;
  std::function<std::optional<QFont>(const QFont& current)> ChooseFont;
  std::function<bool(const QString& path)> OpenDocument;
  // Whether the desktop has a program for PDF files.
  std::function<bool()> PdfViewerAvailable;
  std::function<bool(shell::Command dialog)> RunDialog;  // General, Ira, Projection
  std::function<void(int code)> Quit;
  // Where the reports of a mode go: the report windows for View.
  std::function<reports::ReportTarget(reports::ReportMode)> ReportTargetFor;
  // Prints the chosen reports (selection flags) on a printer, in a preview
  // or into a PDF file.
  std::function<void(int flags, views::PrintOutput output)> PrintReports;
  // The PDF file to print into; empty when cancelled.
  std::function<QString(const QString& suggested)> ChoosePdfFile;
  // The CSV file to export into; empty when cancelled.
  std::function<QString(const QString& suggested)> ChooseCsvFile;
  // Exports the grid of a report (its selection flag) as CSV.
  bool ExportGrid(int flag);
  // The report choices; the selection flags, or 0 when cancelled.
  std::function<int(reports::ReportMode)> ChooseReports;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void CreateActions();
  void CreateOverview();
  bool MaySetAside(bool exiting);
  bool WriteScenario(const std::string& path);
  void RememberFolder(const std::string& path);
  void RememberRecent(const std::string& path);
  void FillRecentMenu();
  void SetCurrentFile(const std::string& path);
  void MarkModified(bool modified);
  // The open report windows show the scenario as it now stands.
  void RefreshReports();
  void RunReports(reports::ReportMode mode, views::PrintOutput output = views::PrintOutput::Printer);
  void PrintToPdf(int flags);
  bool ShowInputDialog(shell::Command dialog);

  settings::Settings m_settings;
  std::string m_userFolder;
  long m_startTime;
  std::string m_currentFile = shell::kUntitledFileName;
  bool m_modified = false;
  bool m_closing = false;
  std::unique_ptr<views::QtReportViewer> m_reportWindows;
  std::vector<std::string> m_recent;

  QLabel* m_owner;
  QLabel* m_other;
  QLabel* m_dcy;
  QLabel* m_type;
  QLabel* m_projection;
  QLabel* m_rules;
  QLabel* m_statusRules;
  QTreeWidget* m_iras;
};

}  // namespace ira::desktop

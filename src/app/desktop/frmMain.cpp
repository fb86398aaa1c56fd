#include "app/desktop/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QDir>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <filesystem>

#include "app/desktop/dlgAbout.h"
#include "app/desktop/frmManual.h"
#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/progress.h"
#include "core/base/program.h"
#include "core/base/text.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "dialogs/dlgGenInputs.h"
#include "dialogs/dlgIraList.h"
#include "dialogs/dlgProjOptions.h"
#include "dialogs/dlgRptChoices.h"
#include "dialogs/rules/entries.h"
#include "dialogs/rules/ginputs.h"
#include "views/grid_export.h"
#include "views/qt_report_viewer.h"

namespace ira::desktop {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Toolbar pictures the style has no standard icon for.
QIcon PaintedIcon(void (*paint)(QPainter&)) {
  QPixmap pixmap(32, 32);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  paint(p);
  return QIcon(pixmap);
}

void PaintPrinter(QPainter& p) {
  p.setPen(QPen(QColor(60, 60, 60), 1.5));
  p.setBrush(Qt::white);
  p.drawRect(9, 3, 14, 10);
  p.setBrush(QColor(120, 130, 140));
  p.drawRoundedRect(3, 12, 26, 12, 2, 2);
  p.setBrush(Qt::white);
  p.drawRect(9, 20, 14, 9);
  p.setPen(QColor(90, 90, 90));
  p.drawLine(12, 23, 20, 23);
  p.drawLine(12, 26, 20, 26);
}

void PaintProjection(QPainter& p) {
  p.setPen(QPen(QColor(60, 60, 60), 1.5));
  p.drawLine(4, 28, 29, 28);
  p.drawLine(4, 28, 4, 3);
  const QColor bars[] = {QColor(70, 130, 180), QColor(70, 150, 120), QColor(200, 140, 50)};
  for (int i = 0; i < 3; ++i) {
    p.setBrush(bars[i]);
    p.drawRect(8 + i * 7, 20 - i * 6, 5, 8 + i * 6);
  }
}

QIcon AppIcon() {
  QPixmap pixmap(64, 64);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(30, 90, 140));
  p.drawRoundedRect(2, 2, 60, 60, 12, 12);
  p.setPen(Qt::white);
  QFont f(QStringLiteral("Sans"), 20, QFont::Bold);
  p.setFont(f);
  p.drawText(QRect(2, 2, 60, 60), Qt::AlignCenter, QStringLiteral("IRA"));
  return QIcon(pixmap);
}

constexpr const char* kNotEntered = "(not entered)";

// What New and start-up give: the law in force, and the required-distribution
// type, which most users plan for (the early type would argue with the first
// year typed before the type could be chosen).
void StartNewScenario() {
  TheScenario().ResetForNew();
  TheScenario().Gen.DistType = ginputs::StoredDistType(ginputs::kAfter70Half);
}

}  // namespace

frmMain::frmMain(settings::Settings settings, std::string userFolder, long startTime, QWidget* parent)
    : QMainWindow(parent), m_settings(std::move(settings)), m_userFolder(std::move(userFolder)),
      m_startTime(startTime) {
  QApplication::setWindowIcon(AppIcon());
  ChooseFile = [this](bool save, const QString& folder) {
    QFileDialog dialog(this, save ? QStringLiteral("Save Scenario As") : QStringLiteral("Open Scenario"), folder,
                       QStringLiteral("IRA Scenarios (*.ira);;All Files (*)"));
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setDefaultSuffix(QStringLiteral("ira"));
    return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty() ? dialog.selectedFiles().front()
                                                                                     : QString();
  };
  ChooseFont = [this](const QFont& current) -> std::optional<QFont> {
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, current, this, QStringLiteral("Report Font"));
    if (!ok) return std::nullopt;
    return font;
  };
  OpenDocument = [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };
  PdfViewerAvailable = [] {
    // The desktop's handler for PDF files, as xdg-open would find it.
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty()) return false;
    QProcess query;
    query.start(xdgMime, {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("application/pdf")});
    return query.waitForFinished(3000) && !query.readAllStandardOutput().trimmed().isEmpty();
  };
  RunDialog = [this](shell::Command dialog) { return ShowInputDialog(dialog); };
  Quit = [](int code) { QCoreApplication::exit(code); };
  m_reportWindows = std::make_unique<views::QtReportViewer>(this);
  ReportTargetFor = [this](reports::ReportMode) { return reports::ReportTarget{m_reportWindows.get(), nullptr, {}}; };
  PrintReports = [this](int flags, views::PrintOutput output) {
    switch (output) {
      case views::PrintOutput::Printer: views::PrintReports(flags, this); break;
      case views::PrintOutput::Preview: views::PreviewReports(flags, this); break;
      case views::PrintOutput::Pdf: PrintToPdf(flags); break;
    }
  };
  ChoosePdfFile = [this](const QString& suggested) {
    QFileDialog dialog(this, QStringLiteral("Save Reports as PDF"), suggested, QStringLiteral("PDF Files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty() ? dialog.selectedFiles().front()
                                                                                     : QString();
  };
  ChooseCsvFile = [this](const QString& suggested) {
    return QFileDialog::getSaveFileName(this, QStringLiteral("Export as CSV"), suggested,
                                        QStringLiteral("CSV Files (*.csv)"));
  };
  ChooseReports = [this](reports::ReportMode mode) {
    dialogs::dlgRptChoices choices(mode, this);
    return choices.exec() == QDialog::Accepted ? choices.Flags() : 0;
  };

  m_recent = settings::LoadRecentFiles(m_settings.file);
  CreateActions();
  CreateOverview();
  statusBar()->showMessage(QStringLiteral("Ready"), 3000);
  resize(860, 560);
  // Where the user left the window last time.
  const std::string geometry = settings::LoadWindowGeometry(m_settings.file);
  if (!geometry.empty()) restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(geometry)));
  setAcceptDrops(true);

  // A fresh start: an empty scenario that was never saved.
  StartNewScenario();
  SetCurrentFile(shell::kUntitledFileName);
  Refresh();
}

void frmMain::CreateActions() {
  QStyle* s = style();
  const auto action = [this](const QIcon& icon, const QString& text, shell::Command command, const QString& tip) {
    auto* a = new QAction(icon, text, this);
    a->setStatusTip(tip);
    connect(a, &QAction::triggered, this, [this, command] { Run(command); });
    return a;
  };
  mnuNew = action(s->standardIcon(QStyle::SP_FileIcon), QStringLiteral("&New"), shell::Command::New,
                  QStringLiteral("Start a new, empty scenario"));
  mnuNew->setShortcut(QKeySequence::New);
  mnuOpen = action(s->standardIcon(QStyle::SP_DialogOpenButton), QStringLiteral("&Open..."), shell::Command::Open,
                   QStringLiteral("Open a scenario file"));
  mnuOpen->setShortcut(QKeySequence::Open);
  mnuSave = action(s->standardIcon(QStyle::SP_DialogSaveButton), QStringLiteral("&Save"), shell::Command::Save,
                   QStringLiteral("Save the scenario"));
  mnuSave->setShortcut(QKeySequence::Save);
  mnuSaveAs = action(QIcon(), QStringLiteral("Save &As..."), shell::Command::SaveAs,
                     QStringLiteral("Save the scenario under a new name"));
  mnuSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  mnuPrint = action(PaintedIcon(PaintPrinter), QStringLiteral("&Print Reports..."), shell::Command::Print,
                    QStringLiteral("Print reports"));
  mnuPrint->setShortcut(QKeySequence::Print);
  mnuPreview = action(QIcon(), QStringLiteral("Print Pre&view..."), shell::Command::Preview,
                      QStringLiteral("See the printed pages of reports on screen"));
  mnuSavePdf = action(QIcon(), QStringLiteral("Sav&e as PDF..."), shell::Command::SavePdf,
                      QStringLiteral("Print reports into a PDF file"));
  mnuDisplay = action(s->standardIcon(QStyle::SP_FileDialogContentsView), QStringLiteral("&Display Reports..."),
                      shell::Command::Display, QStringLiteral("Show reports on screen"));
  mnuGeneral = action(s->standardIcon(QStyle::SP_FileDialogInfoView), QStringLiteral("&General Inputs..."),
                      shell::Command::General, QStringLiteral("The owner, the spouse, the year and the type"));
  mnuIra = action(s->standardIcon(QStyle::SP_FileDialogListView), QStringLiteral("&IRA List..."),
                  shell::Command::Ira, QStringLiteral("Add, edit, delete and order the owner's IRAs"));
  mnuProjection = action(PaintedIcon(PaintProjection), QStringLiteral("&Projection Options..."),
                         shell::Command::Projection, QStringLiteral("Years to project and the withdrawal plan"));
  mnuFont = action(QIcon(), QStringLiteral("Report &Font..."), shell::Command::Font,
                   QStringLiteral("Choose the font of the reports"));
  mnuHelp = action(s->standardIcon(QStyle::SP_DialogHelpButton), QStringLiteral("&User Manual"),
                   shell::Command::Help, QStringLiteral("Open the user manual"));
  mnuHelp->setShortcut(QKeySequence::HelpContents);
  mnuManualHere = new QAction(QStringLiteral("User Manual in the &Program"), this);
  mnuManualHere->setStatusTip(QStringLiteral("Read the user manual in a window of this program"));
  connect(mnuManualHere, &QAction::triggered, this, [this] { ShowManualInProgram(); });
  mnuAbout = action(QIcon(), QStringLiteral("&About..."), shell::Command::About,
                    QStringLiteral("Version, usage time and ordering"));
  mnuExit = action(s->standardIcon(QStyle::SP_DialogCloseButton), QStringLiteral("E&xit"), shell::Command::Exit,
                   QStringLiteral("End the program"));
  mnuExit->setShortcut(QKeySequence::Quit);

  mnuExportCalSumm = new QAction(QStringLiteral("&Calendar Year Summary..."), this);
  mnuExportCalSumm->setStatusTip(QStringLiteral("Save the Calendar Year Summary as a CSV file"));
  connect(mnuExportCalSumm, &QAction::triggered, this, [this] { ExportGrid(reports::kRptCalSumm); });
  mnuExportProjection = new QAction(QStringLiteral("&Projection of Distributions..."), this);
  mnuExportProjection->setStatusTip(QStringLiteral("Save the projection as a CSV file"));
  connect(mnuExportProjection, &QAction::triggered, this, [this] { ExportGrid(reports::kRptProjection); });

  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addActions({mnuNew, mnuOpen, mnuSave, mnuSaveAs});
  file->addSeparator();
  file->addActions({mnuPrint, mnuPreview, mnuSavePdf});
  QMenu* exportMenu = file->addMenu(QStringLiteral("Expor&t as CSV"));
  exportMenu->addActions({mnuExportCalSumm, mnuExportProjection});
  file->addSeparator();
  mnuRecent = file->addMenu(QStringLiteral("&Recent Files"));
  FillRecentMenu();
  file->addSeparator();
  file->addAction(mnuExit);
  QMenu* inputs = menuBar()->addMenu(QStringLiteral("&Inputs"));
  inputs->addActions({mnuGeneral, mnuIra, mnuProjection});
  QMenu* reports = menuBar()->addMenu(QStringLiteral("&Reports"));
  reports->addActions({mnuDisplay, mnuPrint, mnuPreview, mnuSavePdf});
  reports->addSeparator();
  reports->addAction(mnuFont);
  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  help->addActions({mnuHelp, mnuManualHere, mnuAbout});

  // Toolbar buttons carry their key; a click looks the key up.
  tlbMain = addToolBar(QStringLiteral("Commands"));
  tlbMain->setObjectName(QStringLiteral("tlbMain"));
  tlbMain->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  tlbMain->setMovable(false);
  const struct {
    const char* key;
    QAction* like;
    const char* text;
    bool groupEnds;
  } buttons[] = {
      {"New", mnuNew, "New", false},
      {"Open", mnuOpen, "Open", false},
      {"Save", mnuSave, "Save", false},
      {"Print", mnuPrint, "Print", true},
      {"Display", mnuDisplay, "Display", false},
      {"General", mnuGeneral, "General", false},
      {"IRA", mnuIra, "IRAs", true},
      {"Projection", mnuProjection, "Projection", true},
      {"Help", mnuHelp, "Help", false},
      {"Exit", mnuExit, "Exit", false},
  };
  for (const auto& b : buttons) {
    auto* button = tlbMain->addAction(b.like->icon(), QString::fromLatin1(b.text));
    button->setData(QString::fromLatin1(b.key));
    button->setToolTip(b.like->statusTip());
    button->setObjectName(QStringLiteral("tlb") + QString::fromLatin1(b.key));
    if (b.like == mnuProjection) connect(mnuProjection, &QAction::enabledChanged, button, &QAction::setEnabled);
    if (b.groupEnds) tlbMain->addSeparator();
  }
  connect(tlbMain, &QToolBar::actionTriggered, this,
          [this](QAction* a) { tlbMain_ButtonClick(a->data().toString()); });
}

void frmMain::CreateOverview() {
  auto* central = new QWidget(this);
  auto* general = new QGroupBox(QStringLiteral("General Inputs"), central);
  auto* form = new QFormLayout(general);
  m_owner = new QLabel(general);
  m_other = new QLabel(general);
  m_dcy = new QLabel(general);
  m_type = new QLabel(general);
  m_projection = new QLabel(general);
  m_rules = new QLabel(general);
  m_rules->setObjectName(QStringLiteral("lblRules"));
  form->addRow(QStringLiteral("IRA Owner:"), m_owner);
  form->addRow(QStringLiteral("Other Info.:"), m_other);
  form->addRow(QStringLiteral("Distribution Calendar Year:"), m_dcy);
  form->addRow(QStringLiteral("Type of Distribution:"), m_type);
  form->addRow(QStringLiteral("Projection:"), m_projection);
  form->addRow(QStringLiteral("Rules:"), m_rules);
  m_statusRules = new QLabel(this);
  m_statusRules->setObjectName(QStringLiteral("lblStatusRules"));
  statusBar()->addPermanentWidget(m_statusRules);

  auto* iras = new QGroupBox(QStringLiteral("IRAs"), central);
  m_iras = new QTreeWidget(iras);
  m_iras->setRootIsDecorated(false);
  m_iras->setHeaderLabels({QStringLiteral("IRA"), QStringLiteral("Benefit (before adjustments)"),
                           QStringLiteral("Distributed this year"), QStringLiteral("Spouse"),
                           QStringLiteral("Non-Spouse Beneficiary")});
  m_iras->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  m_iras->header()->setStretchLastSection(true);
  connect(m_iras, &QTreeWidget::itemDoubleClicked, this, [this] { Run(shell::Command::Ira); });
  auto* irasLayout = new QVBoxLayout(iras);
  irasLayout->addWidget(m_iras);

  auto* layout = new QVBoxLayout(central);
  layout->addWidget(general);
  layout->addWidget(iras, 1);
  setCentralWidget(central);
}

void frmMain::Refresh() {
  const Scenario& sc = TheScenario();
  const GeneralInputs& gen = sc.Gen;
  const std::string owner = RTrim(gen.OwnerName);
  m_owner->setText(owner.empty() ? QString::fromLatin1(kNotEntered) : Q(owner));
  m_other->setText(Q(RTrim(gen.OtherInfo)));
  m_dcy->setText(gen.DCY != 0 ? QString::number(gen.DCY) : QString::fromLatin1(kNotEntered));
  if (IsEarly(gen)) {
    const char* methods[] = {"minimum distribution", "amortization", "annuity"};
    const char* method = gen.EarlyMethod >= 0 && gen.EarlyMethod < 3 ? methods[gen.EarlyMethod] : "?";
    m_type->setText(QStringLiteral("Early distributions before 59 1/2, by the ") + QString::fromLatin1(method) +
                    QStringLiteral(" method"));
  } else {
    m_type->setText(QStringLiteral("Required minimum distributions"));
  }
  m_projection->setText(gen.ProjectionYears == 0
                            ? QStringLiteral("Off")
                            : QString::number(gen.ProjectionYears) + QStringLiteral(" years, ") +
                                  Q(NumberText(gen.PercentOver)) + QStringLiteral("% over the minimum"));

  const QString rules = Q(ginputs::RuleSetName(gen.RuleSet));
  m_rules->setText(rules.left(1).toUpper() + rules.mid(1));
  m_statusRules->setText(QStringLiteral("Rules: ") + rules);

  m_iras->clear();
  for (std::size_t i = 0; i < sc.Ira.size(); ++i) {
    const IraRecord& ira = sc.Ira[i];
    std::string name = RTrim(ira.IraName);
    if (name.empty()) name = "(IRA " + std::to_string(i + 1) + ")";
    auto* item = new QTreeWidgetItem(m_iras);
    item->setText(0, Q(name));
    item->setText(1, Q(rules::AmountText(ira.Benefit)));
    item->setText(2, Q(rules::AmountText(ira.DistributedThisYear)));
    item->setText(3, ira.SpouseBen != 0 ? QStringLiteral("Yes") : QStringLiteral("No"));
    item->setText(4, ira.OtherBen != 0 ? Q(RTrim(ira.BeneficiaryName)) : QString());
    item->setTextAlignment(1, Qt::AlignRight);
    item->setTextAlignment(2, Qt::AlignRight);
  }
  // Only a scenario with IRAs has anything to project.
  mnuProjection->setEnabled(gen.IraCount > 0);
  RefreshReports();
}

void frmMain::RefreshReports() {
  if (!m_reportWindows) return;
  m_reportWindows->RefreshOpen([this](int flag) {
    if (flag == reports::kRptProjection && !reports::ProjectionModeOn()) {
      m_reportWindows->CloseReport(flag);  // nothing left to project
      return;
    }
    reports::DisplayMaster(reports::ReportMode::View, flag, reports::ReportTarget{m_reportWindows.get(), nullptr, {}});
  });
  m_reportWindows->SetReport(0);
}

void frmMain::SetCurrentFile(const std::string& path) {
  m_currentFile = path;
  MarkModified(m_modified);
}

void frmMain::SetModified() { MarkModified(true); }

void frmMain::MarkModified(bool modified) {
  m_modified = modified;
  // A star before the name while there are unsaved changes.
  setWindowTitle((modified ? QStringLiteral("*") : QString()) + Q(shell::MainTitle(m_currentFile)));
}

void frmMain::tlbMain_ButtonClick(const QString& key) {
  const auto command = shell::CommandForKey(key.toStdString());
  if (!command) {
    shell::WarnUnknownToolbarKey();
    return;
  }
  Run(*command);
}

void frmMain::Run(shell::Command command) {
  try {
    switch (command) {
      case shell::Command::New: FileNew(); break;
      case shell::Command::Open: FileOpen(); break;
      case shell::Command::Save: FileSave(); break;
      case shell::Command::SaveAs: FileSaveAs(); break;
      case shell::Command::Print: RunReports(reports::ReportMode::Print); break;
      case shell::Command::Display: RunReports(reports::ReportMode::View); break;
      case shell::Command::Preview: RunReports(reports::ReportMode::Print, views::PrintOutput::Preview); break;
      case shell::Command::SavePdf: RunReports(reports::ReportMode::Print, views::PrintOutput::Pdf); break;
      case shell::Command::General:
      case shell::Command::Ira:
      case shell::Command::Projection:
        if (RunDialog(command)) {
          SetModified();
          Refresh();
        }
        break;
      case shell::Command::Help: OpenManual(); break;
      case shell::Command::Font: GetFonts(); break;
      case shell::Command::About: {
        dlgAbout about(m_startTime, this);
        about.exec();
        break;
      }
      case shell::Command::Exit: close(); break;
    }
  } catch (const std::exception& e) {
    ReportUnexpected("frmMain", e);
  }
}

bool frmMain::ShowInputDialog(shell::Command dialog) {
  Scenario& sc = TheScenario();
  switch (dialog) {
    case shell::Command::General: {
      dialogs::dlgGenInputs dlg(sc.Gen, this);
      return dlg.exec() == QDialog::Accepted;
    }
    case shell::Command::Ira: {
      dialogs::dlgIraList dlg(sc, this);
      return dlg.exec() == QDialog::Accepted;
    }
    case shell::Command::Projection: {
      dialogs::dlgProjOptions dlg(sc.Gen, this);
      return dlg.exec() == QDialog::Accepted;
    }
    default: return false;
  }
}

bool frmMain::MaySetAside(bool exiting) {
  if (!m_modified) return true;
  switch (shell::AskUnsaved(exiting)) {
    case MsgAnswer::Yes: return FileSave();
    case MsgAnswer::No: return true;
    default: return false;  // Cancel or Escape: the edits stay where they are
  }
}

bool frmMain::FileNew() {
  if (!MaySetAside(false)) return false;
  StartNewScenario();
  MarkModified(false);
  SetCurrentFile(shell::kUntitledFileName);
  Refresh();
  return true;
}

bool frmMain::FileOpen() {
  if (!MaySetAside(false)) return false;
  const QString path = ChooseFile(false, Q(m_settings.dataFolder));
  if (path.isEmpty()) return false;
  return OpenScenario(path.toStdString());
}

bool frmMain::OpenScenario(const std::string& path) {
  const bool opened = file::OpenFile(path, TheScenario());
  if (opened) {
    MarkModified(false);
    SetCurrentFile(path);
    RememberFolder(path);
    RememberRecent(path);
  }
  Refresh();
  return opened;
}

bool frmMain::FileSave() {
  if (m_currentFile == shell::kUntitledFileName) return FileSaveAs();
  return WriteScenario(m_currentFile);
}

bool frmMain::FileSaveAs() {
  QString path = ChooseFile(true, Q(m_settings.dataFolder));
  if (path.isEmpty()) return false;
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".ira");
  const std::string chosen = path.toStdString();
  if (!file::CheckReservedName(chosen)) return false;
  if (!WriteScenario(chosen)) return false;
  SetCurrentFile(chosen);
  RememberFolder(chosen);
  RememberRecent(chosen);
  return true;
}

bool frmMain::WriteScenario(const std::string& path) {
  try {
    ProgressScope notice("Saving " + path);
    file::SaveFile(path, TheScenario());
  } catch (const FileError& e) {
    ShowMessage("WARNING", e.what(), MsgIcon::Exclamation);
    return false;
  }
  MarkModified(false);
  return true;
}

void frmMain::FillRecentMenu() {
  mnuRecent->clear();
  for (std::size_t i = 0; i < m_recent.size(); ++i) {
    const std::string path = m_recent[i];
    QAction* a = mnuRecent->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(Q(path)).fileName()));
    a->setStatusTip(Q(path));
    a->setToolTip(Q(path));
    connect(a, &QAction::triggered, this, [this, path] { OpenAfterAsking(path); });
  }
  mnuRecent->setEnabled(!m_recent.empty());
}

void frmMain::RememberRecent(const std::string& path) {
  m_recent = settings::WithRecentFile(m_recent, QFileInfo(Q(path)).absoluteFilePath().toStdString());
  FillRecentMenu();
  try {
    settings::SaveRecentFiles(m_settings.file, m_recent);
  } catch (const FileError& e) {
    ShowMessage("WARNING", e.what(), MsgIcon::Exclamation);
  }
}

bool frmMain::OpenAfterAsking(const std::string& path) {
  if (!std::filesystem::exists(path)) {
    ShowMessage("File not found", "The scenario file " + path + " no longer exists.", MsgIcon::Information);
    std::erase(m_recent, path);
    FillRecentMenu();
    try {
      settings::SaveRecentFiles(m_settings.file, m_recent);
    } catch (const FileError&) {
      // The list on disk keeps the name; it is dropped again next time.
    }
    return false;
  }
  if (!MaySetAside(false)) return false;
  return OpenScenario(path);
}

namespace {

// The one local scenario file a drop carries, or nothing.
std::optional<std::string> DroppedScenario(const QMimeData* mime) {
  const QList<QUrl> urls = mime != nullptr ? mime->urls() : QList<QUrl>{};
  if (urls.size() != 1 || !urls.front().isLocalFile()) return std::nullopt;
  const QString path = urls.front().toLocalFile();
  if (QFileInfo(path).suffix().compare(QStringLiteral("ira"), Qt::CaseInsensitive) != 0) return std::nullopt;
  return path.toStdString();
}

}  // namespace

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
  if (DroppedScenario(event->mimeData())) event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
  const auto path = DroppedScenario(event->mimeData());
  if (!path) return;
  event->acceptProposedAction();
  // The drop ends first; the question and the opening follow.
  QMetaObject::invokeMethod(
      this, [this, p = *path] { OpenDropped(p); }, Qt::QueuedConnection);
}

void frmMain::OpenDropped(const std::string& path) {
  try {
    OpenAfterAsking(path);
  } catch (const std::exception& e) {
    ReportUnexpected("frmMain", e);
  }
}

void frmMain::RememberFolder(const std::string& path) {
  m_settings.dataFolder = QFileInfo(Q(path)).absolutePath().toStdString();
  try {
    settings::SaveDataFolder(m_settings.file, m_settings.dataFolder);
  } catch (const FileError& e) {
    ShowMessage("WARNING", e.what(), MsgIcon::Exclamation);
  }
}

void frmMain::GetFonts() {
  bool chosen = false;
  reports::GetFonts([&](const reports::ReportFontInfo& current) -> std::optional<reports::ReportFontInfo> {
    QFont font(Q(current.name));
    font.setPointSizeF(current.size);
    const auto picked = ChooseFont(font);
    if (!picked) return std::nullopt;
    chosen = true;
    return reports::ReportFontInfo{picked->family().toStdString(), static_cast<float>(picked->pointSizeF())};
  });
  if (!chosen) return;
  m_settings.font = reports::ReportFont();
  try {
    settings::SaveReportFont(m_settings.file, m_settings.font);
  } catch (const FileError& e) {
    ShowMessage("WARNING", e.what(), MsgIcon::Exclamation);
  }
}

void frmMain::OpenManual() {
  const std::string manual = ProgramFile(shell::kManualFile);
  if (!std::filesystem::exists(manual)) {
    ShowMessage("File not found",
                "File: " + manual + " does not exist.Please verify the file is in the correct directory.",
                MsgIcon::Information);
    return;
  }
  // Without a program for PDF files the manual is read here.
  if (!PdfViewerAvailable() || !OpenDocument(Q(manual))) ShowManualInProgram();
}

bool frmMain::ShowManualInProgram() {
  const QStringList chapters = ManualChapters(Q(ProgramFile(kManualFolder)));
  if (chapters.isEmpty()) {
    ShowMessage("WARNING",
                "The user manual cannot be shown: no program to show PDF files was found, and its chapters are not in " +
                    ProgramFile(kManualFolder) + ".",
                MsgIcon::Exclamation);
    return false;
  }
  auto* window = new frmManual(chapters, this);
  window->show();
  return true;
}

void frmMain::RunReports(reports::ReportMode mode, views::PrintOutput output) {
  const int flags = ChooseReports(mode);
  if (flags <= 0) return;
  if (mode == reports::ReportMode::View) {
    // One report at a time, so that each finds its own window again.
    const reports::ReportTarget target = ReportTargetFor(mode);
    for (int flag = 1; flag <= reports::kRptAll; flag <<= 1) {
      if ((flags & flag) == 0) continue;
      m_reportWindows->SetReport(flag);
      reports::DisplayMaster(mode, flag, target);
    }
    m_reportWindows->SetReport(0);
  } else
    PrintReports(flags, output);
}

bool frmMain::ExportGrid(int flag) {
  try {
    const auto grid = views::ReportGrid(flag);
    if (!grid) {
      ShowMessage(reports::kCantShowTitle, "There is no projection to export: set up the Projection Options first.",
                  MsgIcon::Information);
      return false;
    }
    const std::string base = m_currentFile == shell::kUntitledFileName
                                 ? grid->caption
                                 : QFileInfo(Q(m_currentFile)).completeBaseName().toStdString() + " - " + grid->caption;
    QString path = ChooseCsvFile(QDir(Q(m_settings.dataFolder)).filePath(Q(base + ".csv")));
    if (path.isEmpty()) return false;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".csv");
    return views::SaveGridCsv(*grid, path);
  } catch (const std::exception& e) {
    ReportUnexpected("ExportGrid()", e);
    return false;
  }
}

void frmMain::PrintToPdf(int flags) {
  const std::string base = m_currentFile == shell::kUntitledFileName
                               ? std::string("Reports")
                               : QFileInfo(Q(m_currentFile)).completeBaseName().toStdString();
  const QString path = ChoosePdfFile(QDir(Q(m_settings.dataFolder)).filePath(Q(base + ".pdf")));
  if (!path.isEmpty()) views::SaveReportsAsPdf(flags, path);
}

std::string frmMain::DebugFile() const {
  return settings::FolderWritable(ProgramFolder()) ? file::DebugFilePath() : m_userFolder + "/DEBUG.IRA";
}

void frmMain::ShutDown(bool save) {
  if (save) FileSave();
  m_closing = true;
  close();
  Quit(1);
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (!m_closing && !MaySetAside(true)) {
    event->ignore();
    return;
  }
  m_closing = true;
  try {
    settings::SaveWindowGeometry(m_settings.file, saveGeometry().toBase64().toStdString());
  } catch (const FileError&) {
    // The window opens at its default place next time.
  }
  // The last state of every session is kept, saved or not.
  try {
    file::SaveFile(DebugFile(), TheScenario());
  } catch (const std::exception& e) {
    statusBar()->showMessage(Q(e.what()));
  }
  event->accept();
}

}  // namespace ira::desktop

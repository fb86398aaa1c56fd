#include "views/grid_window.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QStylePainter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "views/frmReportForm.h"
#include "views/grid_export.h"
#include "views/report_font.h"

namespace ira::views {
namespace {

// Paints the column header of the label column into the grid's top-left
// corner, which a table otherwise leaves empty.
class CornerTitle : public QObject {
 public:
  CornerTitle(QAbstractButton* corner, QString text) : QObject(corner), m_text(std::move(text)) {
    corner->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    auto* corner = static_cast<QAbstractButton*>(watched);
    QStyleOptionHeader option;
    option.initFrom(corner);
    option.rect = corner->rect();
    option.text = m_text;
    option.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.position = QStyleOptionHeader::OnlyOneSection;
    QStylePainter painter(corner);
    painter.drawControl(QStyle::CE_Header, option);
    return true;
  }

 private:
  QString m_text;
};

QString HeaderText(const reports::GridReport& grid, std::size_t column) {
  QStringList lines;
  for (int r = 0; r < grid.fixedRows && r < static_cast<int>(grid.cells.size()); ++r) {
    const auto& row = grid.cells[static_cast<std::size_t>(r)];
    lines << (column < row.size() ? CellText(row[column]) : QString());
  }
  return lines.join(QLatin1Char('\n'));
}

// A rule of dashes or equal signs: drawn across its column, cut at its edge.
bool IsRule(const QString& text) {
  const QString t = text.trimmed();
  return !t.isEmpty() && (t.count(QLatin1Char('-')) == t.size() || t.count(QLatin1Char('=')) == t.size());
}

// The widest line of a cell that is not a rule.
int TextWidth(const QFontMetrics& fm, const QString& text) {
  int widest = 0;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    if (!IsRule(line)) widest = std::max(widest, fm.horizontalAdvance(line));
  }
  return widest;
}

}  // namespace

QString CellText(const std::string& cell) {
  QString text = QString::fromStdString(cell);
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return text;
}

GridReportWindow::GridReportWindow(const char* objectName, const reports::GridReport& grid,
                                   std::initializer_list<const char*> above, QWidget* parent)
    : QWidget(parent, Qt::Window), m_grid(grid) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QString::fromLatin1(objectName));
  setWindowTitle(QString::fromStdString(grid.caption));
  const QFont font = ReportQFont();

  txtHeading = new QLabel(CellText(grid.heading), this);
  txtHeading->setObjectName(QStringLiteral("txtHeading"));
  txtHeading->setFont(font);
  txtHeading->setAlignment(Qt::AlignCenter);
  txtHeading->setTextInteractionFlags(Qt::TextSelectableByMouse);

  vsGrdDisplay = new QTableWidget(this);
  vsGrdDisplay->setObjectName(QStringLiteral("vsGrdDisplay"));
  vsGrdDisplay->setFont(font);
  vsGrdDisplay->horizontalHeader()->setFont(font);
  vsGrdDisplay->verticalHeader()->setFont(font);
  vsGrdDisplay->setEditTriggers(QAbstractItemView::NoEditTriggers);
  vsGrdDisplay->setWordWrap(false);
  // Rules of dashes wider than their column are cut, as on paper, not elided.
  vsGrdDisplay->setTextElideMode(Qt::ElideNone);

  const std::size_t columns = grid.columnWidths.size();
  const std::size_t fixedCols = static_cast<std::size_t>(std::max(grid.fixedCols, 0));
  const std::size_t firstRow = static_cast<std::size_t>(std::max(grid.fixedRows, 0));
  const std::size_t rows = grid.cells.size() > firstRow ? grid.cells.size() - firstRow : 0;
  vsGrdDisplay->setColumnCount(static_cast<int>(columns - std::min(fixedCols, columns)));
  vsGrdDisplay->setRowCount(static_cast<int>(rows));

  // Widths in "X" widths, plus the cell's own margins so the counted
  // characters really fit.
  const int x = QFontMetrics(font).horizontalAdvance(QLatin1Char('X'));
  const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, vsGrdDisplay) + 1);
  const auto width = [&](std::size_t c) { return grid.columnWidths[c] * x + margin; };

  for (std::size_t c = fixedCols; c < columns; ++c) {
    const int col = static_cast<int>(c - fixedCols);
    auto* header = new QTableWidgetItem(HeaderText(grid, c));
    // The description column reads from the left, the amounts from the right.
    header->setTextAlignment(c == 0 ? Qt::AlignLeft | Qt::AlignBottom : Qt::AlignRight | Qt::AlignBottom);
    vsGrdDisplay->setHorizontalHeaderItem(col, header);
    vsGrdDisplay->setColumnWidth(col, width(c));
  }
  for (std::size_t r = 0; r < rows; ++r) {
    const auto& cells = grid.cells[firstRow + r];
    const int row = static_cast<int>(r);
    if (fixedCols > 0) {
      auto* label = new QTableWidgetItem(cells.empty() ? QString() : CellText(cells[0]));
      label->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
      vsGrdDisplay->setVerticalHeaderItem(row, label);
    }
    for (std::size_t c = fixedCols; c < columns && c < cells.size(); ++c) {
      auto* item = new QTableWidgetItem(CellText(cells[c]));
      item->setTextAlignment(c == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignRight | Qt::AlignVCenter);
      vsGrdDisplay->setItem(row, static_cast<int>(c - fixedCols), item);
    }
  }
  // A column is at least as wide as it is counted, and never narrower than
  // what it holds: a cut amount would read as a different figure.
  const QFontMetrics fm(font);
  for (int col = 0; col < vsGrdDisplay->columnCount(); ++col) {
    int needed = TextWidth(fm, vsGrdDisplay->horizontalHeaderItem(col)->text());
    for (int row = 0; row < vsGrdDisplay->rowCount(); ++row) {
      if (const QTableWidgetItem* item = vsGrdDisplay->item(row, col)) needed = std::max(needed, TextWidth(fm, item->text()));
    }
    vsGrdDisplay->setColumnWidth(col, std::max(vsGrdDisplay->columnWidth(col), needed + margin));
  }
  if (fixedCols > 0) {
    int needed = TextWidth(fm, HeaderText(grid, 0));
    for (int row = 0; row < vsGrdDisplay->rowCount(); ++row) {
      if (const QTableWidgetItem* item = vsGrdDisplay->verticalHeaderItem(row)) needed = std::max(needed, TextWidth(fm, item->text()));
    }
    vsGrdDisplay->verticalHeader()->setFixedWidth(std::max(width(0), needed + margin));
    if (auto* corner = vsGrdDisplay->findChild<QAbstractButton*>()) new CornerTitle(corner, HeaderText(grid, 0));
  } else {
    vsGrdDisplay->verticalHeader()->hide();
  }
  vsGrdDisplay->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  vsGrdDisplay->verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 6);
  vsGrdDisplay->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  vsGrdDisplay->horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignBottom);

  btnClose = new QPushButton(style()->standardIcon(QStyle::SP_DialogCloseButton), QStringLiteral("&Close"), this);
  btnClose->setObjectName(QStringLiteral("btnClose"));
  connect(btnClose, &QPushButton::clicked, this, &QWidget::close);
  auto* copy = new QShortcut(QKeySequence::Copy, vsGrdDisplay, this, &GridReportWindow::CopySelection);
  copy->setContext(Qt::WidgetWithChildrenShortcut);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(txtHeading);
  auto* under = new QVBoxLayout;
  for (const reports::GridLabel& l : grid.labels) {
    auto* label = new QLabel(QString::fromStdString(l.text), this);
    label->setObjectName(QString::fromStdString(l.name));
    label->setVisible(l.visible);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const bool isAbove = std::any_of(above.begin(), above.end(), [&](const char* n) { return l.name == n; });
    if (isAbove) {
      label->setAlignment(Qt::AlignCenter);
      layout->addWidget(label);
    } else {
      label->setWordWrap(true);
      under->addWidget(label);
    }
  }
  layout->addWidget(vsGrdDisplay, 1);
  layout->addLayout(under);
  btnExportCsv = new QPushButton(QStringLiteral("Export &CSV..."), this);
  btnExportCsv->setObjectName(QStringLiteral("btnExportCsv"));
  btnExportCsv->setToolTip(QStringLiteral("Save the whole table as a CSV file for a spreadsheet"));
  btnCopyAll = new QPushButton(QStringLiteral("Copy &All"), this);
  btnCopyAll->setObjectName(QStringLiteral("btnCopyAll"));
  btnCopyAll->setToolTip(QStringLiteral("Put the whole table on the clipboard (Ctrl+C copies the selected cells)"));
  connect(btnExportCsv, &QPushButton::clicked, this, &GridReportWindow::ExportCsv);
  connect(btnCopyAll, &QPushButton::clicked, this, &GridReportWindow::CopyAll);
  ChooseCsvFile = [this](const QString& suggested) {
    return QFileDialog::getSaveFileName(this, QStringLiteral("Export as CSV"), suggested,
                                        QStringLiteral("CSV Files (*.csv)"));
  };
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnExportCsv);
  buttons->addWidget(btnCopyAll);
  buttons->addStretch();
  buttons->addWidget(btnClose);
  layout->addLayout(buttons);
}

QString GridReportWindow::SelectionText() const {
  const QList<QTableWidgetSelectionRange> ranges = vsGrdDisplay->selectedRanges();
  if (ranges.isEmpty()) return {};
  int top = ranges.front().topRow(), bottom = ranges.front().bottomRow();
  int left = ranges.front().leftColumn(), right = ranges.front().rightColumn();
  for (const QTableWidgetSelectionRange& r : ranges) {
    top = std::min(top, r.topRow());
    bottom = std::max(bottom, r.bottomRow());
    left = std::min(left, r.leftColumn());
    right = std::max(right, r.rightColumn());
  }
  QStringList lines;
  for (int row = top; row <= bottom; ++row) {
    QStringList cells;
    for (int col = left; col <= right; ++col) {
      const QTableWidgetItem* item = vsGrdDisplay->item(row, col);
      cells << (item != nullptr && item->isSelected() ? item->text().simplified() : QString());
    }
    lines << cells.join(QLatin1Char('\t'));
  }
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void GridReportWindow::CopySelection() {
  const QString text = SelectionText();
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

void GridReportWindow::CopyAll() { QGuiApplication::clipboard()->setText(GridTsv(m_grid)); }

bool GridReportWindow::ExportCsv() {
  QString path = ChooseCsvFile(QString::fromStdString(m_grid.caption) + QStringLiteral(".csv"));
  if (path.isEmpty()) return false;
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".csv");
  return SaveGridCsv(m_grid, path);
}

QLabel* GridReportWindow::Label(const char* name) const { return findChild<QLabel*>(QString::fromLatin1(name)); }

void GridReportWindow::Place() {
  const QRect screen = this->screen()->availableGeometry();
  int gridWidth = 2 * vsGrdDisplay->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  if (!vsGrdDisplay->verticalHeader()->isHidden()) gridWidth += vsGrdDisplay->verticalHeader()->width();
  for (int c = 0; c < vsGrdDisplay->columnCount(); ++c) gridWidth += vsGrdDisplay->columnWidth(c);
  const int gridHeight = 2 * vsGrdDisplay->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) +
                         vsGrdDisplay->horizontalHeader()->sizeHint().height() +
                         vsGrdDisplay->rowCount() * vsGrdDisplay->verticalHeader()->defaultSectionSize();
  const QSize rest = sizeHint() - vsGrdDisplay->sizeHint();
  resize(std::min(std::max(gridWidth, rest.width()) + 24, screen.width() * 95 / 100),
         std::min(gridHeight + rest.height() + 12, screen.height() * 9 / 10));
  move(screen.center() - rect().center());
}

void GridReportWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace ira::views

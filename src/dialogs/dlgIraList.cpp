#include "dialogs/dlgIraList.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QHeaderView>
#include <QTreeWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/base/checked.h"
#include "core/base/text.h"
#include "dialogs/dlgIraInputs.h"
#include "dialogs/rules/entries.h"
#include "dialogs/rules/irainputs.h"
#include "dialogs/widgets/entry_controls.h"

namespace ira::dialogs {

dlgIraList::dlgIraList(Scenario& scenario, QWidget* parent)
    : QDialog(parent), m_target(scenario), m_iras(scenario.Ira) {
  setWindowTitle(QStringLiteral("IRA List"));
  EditIra = [this](const GeneralInputs& gen, IraRecord& ira) {
    dlgIraInputs dlg(gen, ira, this);
    return dlg.exec() == QDialog::Accepted;
  };

  lstIras = new QTreeWidget(this);
  lstIras->setRootIsDecorated(false);
  lstIras->setHeaderLabels({QStringLiteral("IRA"), QStringLiteral("Benefit")});
  lstIras->header()->setStretchLastSection(false);
  lstIras->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  lstIras->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  lstIras->setMinimumWidth(lstIras->fontMetrics().averageCharWidth() * 52);
  btnAdd = new QPushButton(QStringLiteral("&Add..."), this);
  btnEdit = new QPushButton(QStringLiteral("&Edit..."), this);
  btnDelete = new QPushButton(QStringLiteral("&Delete"), this);
  btnUp = new QPushButton(QStringLiteral("Move &Up"), this);
  btnDown = new QPushButton(QStringLiteral("Move Do&wn"), this);
  for (QPushButton* b : {btnAdd, btnEdit, btnDelete, btnUp, btnDown}) b->setAutoDefault(false);
  buttons = widgets::OkCancelButtons(this);

  auto* side = new QVBoxLayout;
  side->addWidget(btnAdd);
  side->addWidget(btnEdit);
  side->addWidget(btnDelete);
  side->addSpacing(12);
  side->addWidget(btnUp);
  side->addWidget(btnDown);
  side->addStretch();
  auto* body = new QHBoxLayout;
  body->addWidget(lstIras, 1);
  body->addLayout(side);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("The owner's IRAs, in the order of the reports:"), this));
  layout->addLayout(body);
  layout->addWidget(buttons);

  connect(btnAdd, &QPushButton::clicked, this, &dlgIraList::btnAdd_Click);
  connect(btnEdit, &QPushButton::clicked, this, &dlgIraList::btnEdit_Click);
  connect(btnDelete, &QPushButton::clicked, this, &dlgIraList::btnDelete_Click);
  connect(btnUp, &QPushButton::clicked, this, [this] { MoveSelected(-1); });
  connect(btnDown, &QPushButton::clicked, this, [this] { MoveSelected(1); });
  connect(lstIras, &QTreeWidget::itemDoubleClicked, this, &dlgIraList::btnEdit_Click);
  connect(lstIras, &QTreeWidget::currentItemChanged, this, &dlgIraList::SetListEnables);
  connect(buttons, &QDialogButtonBox::accepted, this, &dlgIraList::btnOK_Click);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  FillList(m_iras.empty() ? -1 : 0);
}

void dlgIraList::FillList(int select) {
  lstIras->clear();
  for (std::size_t i = 0; i < m_iras.size(); ++i) {
    std::string name = RTrim(m_iras[i].IraName);
    if (name.empty()) name = "(IRA " + std::to_string(i + 1) + ")";
    auto* item = new QTreeWidgetItem(lstIras);
    item->setText(0, QString::fromStdString(name));
    item->setText(1, QString::fromStdString(rules::AmountText(m_iras[i].Benefit)));
    item->setTextAlignment(1, Qt::AlignRight);
  }
  SetCurrentRow(select);
}

int dlgIraList::CurrentRow() const { return lstIras->indexOfTopLevelItem(lstIras->currentItem()); }

void dlgIraList::SetCurrentRow(int row) {
  lstIras->setCurrentItem(row >= 0 ? lstIras->topLevelItem(row) : nullptr);
  SetListEnables();
}

void dlgIraList::SetListEnables() {
  const int row = CurrentRow();
  btnEdit->setEnabled(row >= 0);
  btnDelete->setEnabled(row >= 0);
  btnUp->setEnabled(row > 0);
  btnDown->setEnabled(row >= 0 && row + 1 < lstIras->topLevelItemCount());
}

void dlgIraList::btnAdd_Click() {
  IraRecord ira;
  if (!EditIra(m_target.Gen, ira)) return;
  m_iras.push_back(ira);
  FillList(static_cast<int>(m_iras.size()) - 1);
}

void dlgIraList::btnEdit_Click() {
  const int row = CurrentRow();
  if (row < 0) return;
  if (EditIra(m_target.Gen, m_iras[static_cast<std::size_t>(row)])) FillList(row);
}

void dlgIraList::btnDelete_Click() {
  const int row = CurrentRow();
  if (row < 0) return;
  m_iras.erase(m_iras.begin() + row);
  FillList(std::min(row, static_cast<int>(m_iras.size()) - 1));
}

void dlgIraList::MoveSelected(int step) {
  const int row = CurrentRow();
  const int to = row + step;
  if (row < 0 || to < 0 || to >= static_cast<int>(m_iras.size())) return;
  irainputs::MoveIra(m_iras, static_cast<std::size_t>(row), static_cast<std::size_t>(to));
  FillList(to);
}

void dlgIraList::btnOK_Click() {
  m_target.Gen.IraCount = CheckedInt16(static_cast<long long>(m_iras.size()), "btnOK_Click()");
  m_target.Ira = m_iras;
  accept();
}

}  // namespace ira::dialogs

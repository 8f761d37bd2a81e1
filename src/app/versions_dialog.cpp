#include "app/versions_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace quillon::app {

VersionsDialog::VersionsDialog(const std::vector<FileVersion>& versions, bool german,
                               QWidget* parent)
    : QDialog(parent) {
  setObjectName("frmVersions");
  setWindowTitle(german ? QStringLiteral("Frühere Versionen")
                        : QStringLiteral("Previous versions"));

  m_list = new QTableWidget(static_cast<int>(versions.size()), 2, this);
  m_list->setObjectName("grdVersions");
  m_list->setHorizontalHeaderLabels(
      {german ? QStringLiteral("Gespeichert") : QStringLiteral("Saved"), QStringLiteral("Bytes")});
  m_list->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  m_list->verticalHeader()->hide();
  m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
  m_list->setSelectionMode(QAbstractItemView::SingleSelection);
  m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  int row = 0;
  for (auto it = versions.rbegin(); it != versions.rend(); ++it, ++row) {
    m_names.push_back(it->name);
    m_list->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(it->time)));
    auto* size = new QTableWidgetItem(QString::number(it->size));
    size->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_list->setItem(row, 1, size);
  }
  if (!versions.empty()) m_list->selectRow(0);

  auto* buttons = new QDialogButtonBox(this);
  QPushButton* restore =
      buttons->addButton(german ? QStringLiteral("Wiederherstellen") : QStringLiteral("Restore"),
                         QDialogButtonBox::AcceptRole);
  restore->setObjectName("cmdRestore");
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setObjectName("cmdClose");
  if (german) close->setText(QStringLiteral("Schließen"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_list, &QTableWidget::itemSelectionChanged, restore,
          [this, restore] { restore->setEnabled(!chosen().empty()); });
  connect(m_list, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_list, 1);
  layout->addWidget(buttons);
  resize(420, 360);
}

std::string VersionsDialog::chosen() const {
  const QList<QTableWidgetItem*> selected = m_list->selectedItems();
  if (selected.isEmpty()) return {};
  const int row = selected.front()->row();
  return row >= 0 && row < static_cast<int>(m_names.size()) ? m_names[static_cast<std::size_t>(row)]
                                                            : std::string();
}

}  // namespace quillon::app

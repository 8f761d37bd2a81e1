#include "app/device/smsc_list_dialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "app/window_settings.h"
#include "text/sms_centres.h"

namespace quillon::app::device {
namespace {

constexpr double kLabelColumnWidth = 2000;   // twips
constexpr double kNumberColumnWidth = 1900;  // twips

}  // namespace

SmscListDialog::SmscListDialog(AppState& state, QWidget* parent) : QDialog(parent), m_state(state) {
  setObjectName("SMSC_Liste");
  setWindowTitle(state.text(slot::kSmscListTitle));

  const auto centres = smsCentres();
  m_table = new QTableWidget(static_cast<int>(centres.size()), 2, this);
  m_table->setObjectName("tabSMSC");
  m_table->setHorizontalHeaderLabels(
      {QStringLiteral("SMS-Center"), QStringLiteral("Telefon-Nummer")});
  m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
  m_table->setSelectionMode(QAbstractItemView::SingleSelection);
  for (int row = 1; row <= static_cast<int>(centres.size()); ++row) {
    const SmsCentre centre = smsCentreAt(row);
    m_table->setItem(row - 1, 0, new QTableWidgetItem(toQString(centre.label)));
    m_table->setItem(row - 1, 1, new QTableWidgetItem(toQString(centre.number)));
  }
  const double dpi = screenDpi(this);
  m_table->setColumnWidth(0, twipsToPixels(kLabelColumnWidth, dpi));
  m_table->setColumnWidth(1, twipsToPixels(kNumberColumnWidth, dpi));
  m_table->horizontalHeader()->setStretchLastSection(true);
  const int tableWidth = m_table->columnWidth(0) + m_table->columnWidth(1) +
                         m_table->verticalHeader()->sizeHint().width() + 24;
  m_table->setMinimumWidth(tableWidth);
  connect(m_table, &QTableWidget::cellClicked, this, [this](int row, int) { choose(row + 1); });

  auto* hint = new QLabel(state.text(slot::kSmscListHint), this);
  hint->setObjectName("Label2");
  hint->setWordWrap(true);
  hint->setMaximumWidth(tableWidth);
  auto* close = new QPushButton(state.text(slot::kClose), this);
  close->setObjectName("cmdEnde");
  connect(close, &QPushButton::clicked, this, &QDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(hint);
  layout->addWidget(m_table, 1);
  layout->addLayout(buttons);
  resize(tableWidth + 24, 520);
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }
}

void SmscListDialog::choose(int row) {
  QGuiApplication::clipboard()->setText(toQString(smsCentreClipboardText(row)));
  m_state.project.smsCentre = std::string(smsCentreAt(row).number);
  m_state.project.changed = true;
  accept();
}

}  // namespace quillon::app::device

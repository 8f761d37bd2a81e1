#include "app/device/umlaut_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "text/umlaut_file.h"

namespace quillon::app::device {
namespace {

constexpr int kCharacterColumn = 0;
constexpr int kSubstituteColumn = 1;

// The substitute's editor turns three typed digits into the character of that code at once.
class SubstituteDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto* line = qobject_cast<QLineEdit*>(editor)) {
      line->setObjectName("txtSubstitute");
      connect(line, &QLineEdit::textEdited, line, [line](const QString& text) {
        if (const auto code = substituteFromDigits(fromQString(text)))
          line->setText(toQString(std::string(1, *code)));
      });
    }
    return editor;
  }
};

QString cellText(const QTableWidget* grid, int row, int column) {
  const QTableWidgetItem* item = grid->item(row, column);
  return item ? item->text() : QString();
}

}  // namespace

std::filesystem::path userUmlautFile() {
  return umlautPathIn(std::filesystem::path(
      QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation).toStdU16String()));
}

UmlautDialog::UmlautDialog(const AppState& state, UserDialog& dialog, std::filesystem::path file,
                           QWidget* parent)
    : QDialog(parent), m_dialog(dialog), m_german(state.texts.german()), m_file(std::move(file)) {
  setObjectName("frmUmlaut");
  setWindowTitle(state.text(slot::kUmlautSubstitution));

  auto* purpose =
      new QLabel(QStringLiteral("For sending special characters in a SMS it is necessary \n"
                                "to substitute the characters on PC with GSM characters"),
                 this);
  purpose->setObjectName("Label1");
  auto* howTo = new QLabel(
      QStringLiteral(
          "In the left col is the PC typed character, in the right the relative "
          "substitution. \nPlease enter the char right by typing 3 numbers, \n(e.g. 231) "
          "and a cryptic letter will appear.\nThis cryptic letter is a correct character "
          "in SMS-text"),
      this);
  howTo->setObjectName("Label2");

  m_grid = new QTableWidget(kUmlautGridRows, 2, this);
  m_grid->setObjectName("grdUmlaute");
  m_grid->setHorizontalHeaderLabels({QStringLiteral("Character"), QStringLiteral("Substitution")});
  m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  m_grid->setItemDelegateForColumn(kSubstituteColumn, new SubstituteDelegate(m_grid));

  auto* save = new QPushButton(state.text(slot::kSave), this);
  save->setObjectName("cmdSave");
  auto* close = new QPushButton(state.text(slot::kClose), this);
  close->setObjectName("cmdClose");
  save->setAutoDefault(false);
  close->setAutoDefault(false);
  connect(save, &QPushButton::clicked, this, &UmlautDialog::save);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(save);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(purpose);
  layout->addWidget(howTo);
  layout->addWidget(m_grid, 1);
  layout->addLayout(buttons);
  resize(520, 480);
  load();
}

void UmlautDialog::load() {
  std::error_code error;
  // No file yet is the usual first start: the grid stays empty.
  if (!std::filesystem::exists(m_file, error)) return;
  const UmlautFile loaded = loadUmlautFile(m_file, m_dialog);
  if (loaded.status != UmlautFileStatus::Ok) {
    m_dialog.tell(
        kMainTitle,
        (m_german ? "Die Datei kann nicht gelesen werden: " : "The file cannot be read: ") +
            fromQString(QString::fromStdU16String(m_file.u16string())),
        BoxIcon::Exclamation);
    return;
  }
  if (static_cast<int>(loaded.rows.size()) > m_grid->rowCount())
    m_grid->setRowCount(static_cast<int>(loaded.rows.size()));
  int row = 0;
  for (const auto& [character, substitute] : loaded.rows) {
    m_grid->setItem(row, kCharacterColumn, new QTableWidgetItem(toQString(character)));
    m_grid->setItem(row, kSubstituteColumn, new QTableWidgetItem(toQString(substitute)));
    ++row;
  }
}

std::vector<std::pair<std::string, std::string>> UmlautDialog::rows() const {
  std::vector<std::pair<std::string, std::string>> result;
  for (int row = 0; row < m_grid->rowCount(); ++row) {
    const QString character = cellText(m_grid, row, kCharacterColumn);
    const QString substitute = cellText(m_grid, row, kSubstituteColumn);
    if (character.isEmpty() && substitute.isEmpty()) continue;
    result.emplace_back(fromQString(character), fromQString(substitute));
  }
  return result;
}

void UmlautDialog::save() {
  // The configuration folder does not exist before the program keeps anything there.
  std::error_code ignored;
  std::filesystem::create_directories(m_file.parent_path(), ignored);
  if (saveUmlautFile(m_file, rows()) != UmlautFileStatus::Ok) {
    m_dialog.tell(
        kMainTitle,
        (m_german ? "Die Datei kann nicht geschrieben werden: " : "The file cannot be written: ") +
            fromQString(QString::fromStdU16String(m_file.u16string())),
        BoxIcon::Exclamation);
  }
}

}  // namespace quillon::app::device

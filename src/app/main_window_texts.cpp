// Languages: filling the captions of every control from the text table.

#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include "app/flag_page_widget.h"
#include "app/icons.h"
#include "app/keyboard.h"
#include "app/left_pane.h"
#include "app/main_window.h"

namespace quillon::app {

void Anfang::applyCaptions() {
  enum class Part { Text, ToolTip };
  struct Caption {
    const char* name;
    int slot;
    Part part;
  };
  static constexpr Caption kCaptions[] = {
      {"MenuFile", slot::kFileMenu, Part::Text},
      {"MenuFileNew", slot::kNew, Part::Text},
      {"MenuFileOpen", slot::kOpen, Part::Text},
      {"MenuFileSave", slot::kSave, Part::Text},
      {"MenuFileSaveAs", slot::kSaveAs, Part::Text},
      {"MenuFilePrint", slot::kPrint, Part::Text},
      {"MenuFileIns5", slot::kPrinterSetting, Part::Text},
      {"MenuFileIns13", slot::kExit, Part::Text},
      {"MenuConnect", slot::kConnection, Part::Text},
      {"MenuConnDownAll", slot::kDownloadAll, Part::Text},
      {"MenuConnUpAll", slot::kReadAll, Part::Text},
      {"MenuConfig", slot::kConfiguration, Part::Text},
      {"MenuConfigCom", slot::kSerialPort, Part::Text},
      {"MenuConfigSMSC", slot::kSmscListMenu, Part::Text},
      {"mnuConfigVersion", slot::kFirmwareVersion, Part::Text},
      {"mnuConfigUmlaut", slot::kSpecialCharacters, Part::Text},
      {"mnuOptions", slot::kOptions, Part::Text},
      {"mnuSprache", slot::kLanguage, Part::Text},
      {"mnuLangEnglish", slot::kEnglish, Part::Text},
      {"mnuLangGerman", slot::kGerman, Part::Text},
      {"mnuLangFrench", slot::kFrench, Part::Text},
      {"MenuHelp", slot::kHelp, Part::Text},
      {"MenuHelpManual", slot::kDescription, Part::Text},
      {"MenuHelpFirst", slot::kFirstSteps, Part::Text},
      {"MenuHelpMonitor", slot::kReadLogger, Part::Text},
      {"MenuHelpAbout", slot::kAbout, Part::Text},
      {"tbNew", slot::kNew, Part::ToolTip},
      {"tbOpen", slot::kOpen, Part::ToolTip},
      {"tbSave", slot::kSave, Part::ToolTip},
      {"tbPrint", slot::kPrintTable, Part::ToolTip},
      {"tbDown", slot::kDownloadAll, Part::ToolTip},
      {"tbUp", slot::kReadAll, Part::ToolTip},
      {"tbClear", slot::kClearTable, Part::ToolTip},
      {"tbHelp", slot::kManual, Part::ToolTip},
      {"tbEnd", slot::kExit, Part::ToolTip},
      {"tbLog", slot::kLogFileRecord, Part::ToolTip},
      {"Label1Meld", slot::kEditMessage, Part::Text},
      {"Label3", slot::kMessageListInfo, Part::Text},
      {"Label1Filter", slot::kEditFilterText, Part::Text},
      {"lblFilterInfo", slot::kFilterListInfo, Part::Text},
      {"Label6", slot::kPhoneListInfo, Part::Text},
      {"Frame1", slot::kConfigurationPage, Part::Text},
      {"lblSMSC", slot::kSmscPhoneNumber, Part::Text},
      {"cmdSMSCList", slot::kSmscList, Part::Text},
      {"lblPin", slot::kEnterPin, Part::Text},
      {"lblPinInfo", slot::kPinInfo, Part::Text},
      {"lblStation", slot::kStationName, Part::Text},
      {"Label1Tel", slot::kPcOnly, Part::Text},
      {"lblPcOnly", slot::kPinAndStationSaved, Part::Text},
      {"cmdMeldDown", slot::kDownloadMessagesButton, Part::Text},
      {"cmdMeldUp", slot::kUploadMessagesButton, Part::Text},
      {"cmdQuittung", slot::kAcknowledgementRequest, Part::Text},
      {"cmdDown", slot::kDownloadPin, Part::Text},
      {"cmdUp", slot::kReadPin, Part::Text},
      {"cmdTelDown", slot::kDownloadPhones, Part::Text},
      {"cmdTelUp", slot::kReadPhonesButton, Part::Text},
  };
  for (const Caption& caption : kCaptions) {
    const QString text = m_state.text(caption.slot);
    QObject* target = findChild<QObject*>(caption.name);
    if (auto* menu = qobject_cast<QMenu*>(target)) {
      menu->setTitle(text);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
      if (caption.part == Part::ToolTip) {
        action->setText(text);
        action->setToolTip(text);
      } else {
        action->setText(text);
      }
    } else if (auto* box = qobject_cast<QGroupBox*>(target)) {
      box->setTitle(text);
    } else if (auto* labelWidget = qobject_cast<QLabel*>(target)) {
      labelWidget->setText(text);
    } else if (auto* pushButton = qobject_cast<QPushButton*>(target)) {
      pushButton->setText(text);
    }
  }
  const std::array<int, 4> pageSlots = {slot::kMessages, slot::kFilterTexts, slot::kPhoneNumbers,
                                        slot::kMarkerSetting};
  for (int i = 0; i < m_pages->count(); ++i) {
    m_pages->setTabText(i, m_state.text(pageSlots[static_cast<std::size_t>(i)]));
  }
  for (ProjectTableModel* model : m_models) model->headersChanged();
  m_leftPane->setCaptions(m_state.text(slot::kDrive), m_state.text(slot::kDirectory),
                          m_state.text(slot::kFiles));
  m_flagPage->applyTexts();
  m_flagPicture->setPixmap(languageFlag(m_state.language, 18));
  for (const char* name : {"mnuLangEnglish", "mnuLangGerman"}) {
    if (QAction* action = findChild<QAction*>(name)) {
      action->setCheckable(true);
      action->setChecked((m_state.language == kEnglish) == (name[7] == 'E'));
    }
  }
  // Not one of the language table's texts: French, which has none, leaves it as it is too.
  if (m_state.language == kEnglish || m_state.language == kGerman) {
    findChild<QAction*>("MenuFileVersions")
        ->setText(m_state.language == kGerman ? QStringLiteral("Frühere Versionen …")
                                              : QStringLiteral("Previous versions …"));
  }
  refreshRecentMenu();
  refreshGauge();
  addMnemonics(menuBar());
  // Qt's own texts (standard buttons, file and print dialogs) follow the language too.
  m_qtTexts.use(m_state.language);
  m_status->setStatus(StatusPanel::LastTransfer,
                      LastTransferText(m_state.lastTransfer, m_state.texts));
}

void Anfang::chooseLanguage(int language) {
  if (language != kEnglish && language != kGerman) return;
  m_state.language = language;
  m_state.texts.fill(language);
  applyCaptions();
}

}  // namespace quillon::app

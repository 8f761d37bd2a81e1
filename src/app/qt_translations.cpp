#include "app/qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace quillon::app {

QtTranslations::~QtTranslations() { removeAll(); }

void QtTranslations::removeAll() {
  for (auto& translator : m_translators) {
    if (!translator) continue;
    QCoreApplication::removeTranslator(translator.get());
    translator.reset();
  }
}

bool QtTranslations::use(int language) {
  removeAll();
  if (language != 1) return true;
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  const char* catalogues[] = {"qtbase", "qtserialport"};
  bool complete = true;
  for (std::size_t i = 0; i < m_translators.size(); ++i) {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QLocale(QLocale::German), QString::fromLatin1(catalogues[i]),
                          QStringLiteral("_"), folder)) {
      complete = false;
      continue;
    }
    QCoreApplication::installTranslator(translator.get());
    m_translators[i] = std::move(translator);
  }
  return complete;
}

}  // namespace quillon::app

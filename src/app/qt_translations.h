#pragma once
// Qt's own texts (the standard buttons of message boxes, the file dialog, the print dialog, the
// serial port's errors) in the interface language, from the translations Qt ships. The program's
// own texts come from the text table and are not touched.

#include <QTranslator>
#include <array>
#include <memory>

namespace quillon::app {

class QtTranslations {
 public:
  QtTranslations() = default;
  ~QtTranslations();
  QtTranslations(const QtTranslations&) = delete;
  QtTranslations& operator=(const QtTranslations&) = delete;

  // 1 German; 0 English and anything else take Qt's built-in English. Returns false when a German
  // translation is missing (then Qt speaks English).
  bool use(int language);

 private:
  void removeAll();
  std::array<std::unique_ptr<QTranslator>, 2> m_translators;
};

}  // namespace quillon::app

#include "app/app_state.h"

#include "app/qt_text.h"

namespace quillon::app {

QString AppState::text(int slot) const { return toQString(texts[slot]); }

}  // namespace quillon::app

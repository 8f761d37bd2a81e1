#include "app/gsm_preview_view.h"

namespace quillon::app {

QString gsmPreviewHtml(const std::string& /*text*/, const UiTexts& /*texts*/) { return {}; }

}  // namespace quillon::app

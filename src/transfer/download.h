#pragma once
// Downloads: each builds its image, hands it to the transfer window through SignIn and reports
// the outcome in status-bar panel 2. `result` receives the SignIn result (0..7); a procedure
// that stops before the transfer leaves it as the caller set it. Each is a coroutine: it returns at
// its first transfer and goes on when that has ended, so `context` and `result` must outlive it.

#include "transfer/transfer_context.h"

namespace quillon {

// Configuration (PIN). A refused PIN shows the "Settings" box and sends nothing.
Task<> WriteP(TransferContext& context, int& result);
// Messages, acknowledgement request and filter texts; nothing is sent when the text memory
// refuses the image.
Task<> DownloadMessages(TransferContext& context, int& result);
// SMS-centre number and phone numbers (normalised and written back into the project).
Task<> WriteT(TransferContext& context, int& result);
// The flag table.
Task<> WriteEasy800(TransferContext& context, int& result);
// Messages, phone numbers, configuration, flag table; each step only while the result is 0.
Task<> DownloadAll(TransferContext& context, int& result);

}  // namespace quillon

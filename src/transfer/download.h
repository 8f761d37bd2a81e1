#pragma once
// Downloads: each builds its image, hands it to the transfer window through SignIn and reports
// the outcome in status-bar panel 2. `result` receives the SignIn result (0..7); a procedure
// that stops before the transfer leaves it as the caller set it.

#include "transfer/transfer_context.h"

namespace quillon {

// Configuration (PIN). A refused PIN shows the "Settings" box and sends nothing.
void WriteP(TransferContext& context, int& result);
// Messages, acknowledgement request and filter texts; nothing is sent when the text memory
// refuses the image.
void DownloadMessages(TransferContext& context, int& result);
// SMS-centre number and phone numbers (normalised and written back into the project).
void WriteT(TransferContext& context, int& result);
// The flag table.
void WriteEasy800(TransferContext& context, int& result);
// Messages, phone numbers, configuration, flag table; each step only while the result is 0.
void DownloadAll(TransferContext& context, int& result);

}  // namespace quillon

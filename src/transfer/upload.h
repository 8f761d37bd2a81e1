#pragma once
// Uploads: each asks the module for one kind by its request letter through SignIn, decides on
// the result, and only then takes the received image apart into the project; a declined or
// failed upload leaves every table as it was. `result` receives the SignIn result (0..7). Like the
// downloads they are coroutines: `context` and `result` must outlive them.

#include "transfer/transfer_context.h"

namespace quillon {

inline constexpr const char* kOptionModuleTitle = "Option Alarmmodul";

// The single uploads ask the save prompt first when the project has changed.
Task<> UploadMessages(TransferContext& context, int& result);
Task<> UploadPhoneNumbers(TransferContext& context, int& result);
Task<> ReadP(TransferContext& context, int& result);
Task<> ReadEasy800(TransferContext& context, int& result);
// The save prompt once, then messages, phone numbers, configuration and flag table, each only
// while the result so far is 0.
Task<> ReadAll(TransferContext& context, int& result);

// "Data changed. Save?" when the project has changed; Yes runs the front end's "Save as" and
// clears the changed flag, No goes on without saving.
void askSaveBeforeReading(TransferContext& context);

// The result handling shared by every upload: true when the received text is to be parsed
// (result 0, or the fragments question answered Yes). Shows the "no connection" box for 1 and
// 2 and the identification for 7.
[[nodiscard]] bool acceptUploadResult(TransferContext& context, int result,
                                      const std::string& noConnectionText,
                                      const Box& fragmentsQuestion);

}  // namespace quillon

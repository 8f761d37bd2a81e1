#include <string>

#include "link/start_identifier.h"
#include "transfer/data_image.h"

namespace quillon {

TransferJob downloadJob(char kind, std::string contentLabel, const std::string& image,
                        int identifierDigits) {
  TransferJob job;
  job.direction = TransferDirection::Download;
  job.contentLabel = std::move(contentLabel);
  SendTexts parts = splitSendText(image);
  job.sendText = std::move(parts.first);
  job.sendText2 = std::move(parts.second);
  // The identifier announces the whole image, also when it travels in two parts.
  job.startIdentifier = MakeStartIdentifier(kind, image, identifierDigits);
  return job;
}

TransferJob uploadJob(char request, std::string contentLabel) {
  TransferJob job;
  job.direction = TransferDirection::Upload;
  job.contentLabel = std::move(contentLabel);
  job.requestLetter = request;
  return job;
}

}  // namespace quillon

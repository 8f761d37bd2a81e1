#include "sim/module_memory.h"

#include <charconv>

namespace quillon::sim {
namespace {

constexpr std::string_view kStateHeader = "telvane-sim state 1\n";
constexpr std::size_t kPhoneField = 21;
constexpr std::size_t kClosingField = 20;
constexpr int kFilterTexts = 10;

}  // namespace

std::string emptyMessagesImage(int messages) {
  std::string image = "A;";
  image += kFill;
  for (int i = 0; i < messages; ++i) {
    image += '@';
    image += kFill;
  }
  image += "Q ";
  image += kFill;
  image.append(kFilterTexts, kFill);
  image += kEndOfImage;
  return image;
}

std::string emptyPhonesImage(int phones) {
  std::string image(kPhoneField * (1 + static_cast<std::size_t>(phones)) + kClosingField, kFill);
  image += kEndOfImage;
  return image;
}

std::string emptyConfigurationImage() {
  std::string image = "00";
  image += kFill;
  image += "0000";
  image += kFill;
  image += kEndOfImage;
  return image;
}

std::string emptyFlagsImage() {
  std::string image(1, kFill);
  image += "00";
  image += kFill;
  image += kEndOfImage;
  return image;
}

ModuleMemory::ModuleMemory(int messages, int phones)
    : m_images{emptyMessagesImage(messages), emptyPhonesImage(phones), emptyConfigurationImage(),
               emptyFlagsImage()} {}

bool ModuleMemory::holdsKind(char kind) {
  return kind != '\0' && kImageKinds.find(kind) != std::string_view::npos;
}

std::size_t ModuleMemory::slot(char kind) { return kImageKinds.find(kind); }

const std::string& ModuleMemory::image(char kind) const { return m_images.at(slot(kind)); }

void ModuleMemory::store(char kind, std::string image) {
  m_images.at(slot(kind)) = std::move(image);
}

std::string ModuleMemory::serialize() const {
  std::string out(kStateHeader);
  for (char kind : kImageKinds) {
    const std::string& image = m_images[slot(kind)];
    out += kind;
    out += ' ';
    out += std::to_string(image.size());
    out += '\n';
    out += image;
    out += '\n';
  }
  return out;
}

bool ModuleMemory::deserialize(std::string_view text, std::string& error) {
  if (!text.starts_with(kStateHeader)) {
    error = "not a telvane-sim state file";
    return false;
  }
  text.remove_prefix(kStateHeader.size());
  std::array<std::string, 4> images = m_images;
  while (!text.empty()) {
    const char kind = text.front();
    if (!holdsKind(kind) || text.size() < 3 || text[1] != ' ') {
      error = "unknown record in the state file";
      return false;
    }
    const std::size_t eol = text.find('\n');
    if (eol == std::string_view::npos) {
      error = "truncated state file";
      return false;
    }
    std::size_t length = 0;
    const auto digits = text.substr(2, eol - 2);
    const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), length);
    if (ec != std::errc{} || end != digits.data() + digits.size()) {
      error = "bad length in the state file";
      return false;
    }
    text.remove_prefix(eol + 1);
    if (text.size() < length + 1 || text[length] != '\n') {
      error = "truncated state file";
      return false;
    }
    images[slot(kind)] = std::string(text.substr(0, length));
    text.remove_prefix(length + 1);
  }
  m_images = std::move(images);
  return true;
}

}  // namespace quillon::sim

#pragma once
// What the module holds: one data image per kind, as the PC last downloaded it. Before the first
// download each image is empty but already has the shape the PC expects to read back.

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::sim {

inline constexpr char kFill = '\xB6';        // 182: fills and separates fields
inline constexpr char kEndOfImage = '\xFD';  // 253

// The kinds the module stores: messages, phone numbers, configuration, flag table.
inline constexpr std::string_view kImageKinds = "MTPY";

[[nodiscard]] std::string emptyMessagesImage(int messages);
[[nodiscard]] std::string emptyPhonesImage(int phones);
[[nodiscard]] std::string emptyConfigurationImage();
[[nodiscard]] std::string emptyFlagsImage();

class ModuleMemory {
 public:
  ModuleMemory(int messages, int phones);

  [[nodiscard]] static bool holdsKind(char kind);
  // kind is one of kImageKinds.
  [[nodiscard]] const std::string& image(char kind) const;
  void store(char kind, std::string image);

  // The state file: a header line, then per kind "<letter> <length>\n" + the bytes + "\n".
  [[nodiscard]] std::string serialize() const;
  // Replaces the images from a state file; on a malformed file nothing changes.
  [[nodiscard]] bool deserialize(std::string_view text, std::string& error);

 private:
  [[nodiscard]] static std::size_t slot(char kind);
  std::array<std::string, 4> m_images;
};

}  // namespace quillon::sim

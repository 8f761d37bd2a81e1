#pragma once
// Windows-1252, the code page of the project files and of the module's texts, mapped to Unicode
// for the front ends. The core never converts its own data; the GUI and the terminal do.

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

[[nodiscard]] char32_t cp1252ToUnicode(unsigned char byte);
// nullopt for a character that Windows-1252 cannot hold.
[[nodiscard]] std::optional<unsigned char> unicodeToCp1252(char32_t code);

[[nodiscard]] std::string cp1252ToUtf8(std::string_view bytes);
// Characters without a Windows-1252 form become '?'; malformed UTF-8 bytes are taken as Latin-1.
[[nodiscard]] std::string utf8ToCp1252(std::string_view utf8);

}  // namespace quillon

#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// Bytes of Windows code page 1252 as UTF-8. The five bytes that the page leaves undefined become
/// the control characters of the same numbers, so that every byte comes back as it was.
[[nodiscard]] std::string FromCodePage1252(std::string_view bytes);

/// UTF-8 as bytes of code page 1252. A character that the page lacks, and a byte that is no UTF-8,
/// becomes "?".
[[nodiscard]] std::string ToCodePage1252(std::string_view text);

/// True when the whole text can be written in code page 1252 and read back unchanged.
[[nodiscard]] bool FitsCodePage1252(std::string_view text);

} // namespace corvanta

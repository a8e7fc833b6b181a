#pragma once

#include <string>
#include <string_view>

namespace velmo {

/// A path's bytes as UTF-16; a stray byte 0x80 to 0xFF becomes U+DC80 to U+DCFF.
std::u16string ToUtf16(std::string_view bytes);

/// The way back: every text that `ToUtf16` made comes out as it was. A lone surrogate that stands
/// for no byte becomes U+FFFD.
std::string FromUtf16(std::u16string_view text);

} // namespace velmo

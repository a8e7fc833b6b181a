#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace velmo::qt {

/// Logic's bytes as text: UTF-8; each byte that belongs to no valid sequence becomes one of U+DC80
/// to U+DCFF, so that nothing is lost. Any thread.
QString FromBytes(std::string_view bytes);

/// The way back, exact for everything that came from `FromBytes`. A surrogate without its partner
/// that stands for no byte becomes U+FFFD.
std::string ToBytes(QStringView text);

} // namespace velmo::qt

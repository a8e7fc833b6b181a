#pragma once

#include "forms/fX.h"

#include <string>
#include <string_view>

namespace velmo {

/// The bytes of a curve's file: the magic line, then the top of each ticker, in twips, on a line of
/// its own. Lines end with CR LF.
std::string CurveText(const forms::fX& window);

/// Sets the tickers from a curve's file. Of the first line its beginning is the magic; without it
/// nothing happens. A ticker whose line is no number inside the bar stays where it is.
/// Kept: both ends of the bar are outside, though `CurveText` writes them.
void ReadCurve(std::string_view bytes, forms::fX& window);

} // namespace velmo

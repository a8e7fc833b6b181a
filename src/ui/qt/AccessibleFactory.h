#pragma once

namespace velmo::qt {

/// Makes forms, controls and the rows of lists known to screen readers. May be called repeatedly.
void InstallAccessibility();

} // namespace velmo::qt

#pragma once

namespace velmo::qt {

/// Makes the widgets of controls tell screen readers their name, role, text and value. May be
/// called repeatedly.
void InstallControlAccessibility();

} // namespace velmo::qt

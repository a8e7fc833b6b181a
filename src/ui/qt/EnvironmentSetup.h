#pragma once

namespace velmo::qt {

/// Settles what Qt reads once when the application object is made; call it before, from `main`.
/// Keeps what the user has set. Windows that stick to each other need global positions, so X11 is
/// taken where there is one.
void SetUpEnvironment();

} // namespace velmo::qt

#pragma once

namespace velmo::qt {

/// Settles what Qt reads once when the application object is made; call it before, from `main`.
/// Keeps what the user has set. Windows that stick to each other need global positions, so X11 is
/// taken where there is one.
void SetUpEnvironment();

/// Whether the window system lets a program say where its windows stand. Where it doesn't, windows
/// can't stick to each other, and the system itself moves them. For use once there is an
/// application object.
bool HasWindowPlaces();

/// One line to stderr about what this window system can't do.
void TellLimits();

} // namespace velmo::qt

#pragma once

class QKeyEvent;

namespace velmo::qt {

/// The code by which logic knows the key: letters and digits by their capital's code point, Delete
/// 46, Enter 13, F1 112 and so on; 0 for a key that has none here.
int VirtualKey(const QKeyEvent& event);

/// Whether the key's text is meant for the window. With Alt, or the desktop's own key, it's a
/// command for somebody else.
bool IsTyped(const QKeyEvent& event);

} // namespace velmo::qt

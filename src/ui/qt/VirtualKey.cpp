#include "VirtualKey.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace velmo::qt {

namespace {

constexpr std::array Named{
    std::pair{Qt::Key_Backspace, 8 },
    std::pair{Qt::Key_Tab,       9 },
    std::pair{Qt::Key_Return,    13},
    std::pair{Qt::Key_Enter,     13},
    std::pair{Qt::Key_Shift,     16},
    std::pair{Qt::Key_Control,   17},
    std::pair{Qt::Key_Alt,       18},
    std::pair{Qt::Key_Escape,    27},
    std::pair{Qt::Key_Space,     32},
    std::pair{Qt::Key_PageUp,    33},
    std::pair{Qt::Key_PageDown,  34},
    std::pair{Qt::Key_End,       35},
    std::pair{Qt::Key_Home,      36},
    std::pair{Qt::Key_Left,      37},
    std::pair{Qt::Key_Up,        38},
    std::pair{Qt::Key_Right,     39},
    std::pair{Qt::Key_Down,      40},
    std::pair{Qt::Key_Insert,    45},
    std::pair{Qt::Key_Delete,    46},
    std::pair{Qt::Key_Menu,      93},
};

constexpr int FirstFunctionKey = 112;

} // namespace

int VirtualKey(const QKeyEvent& event)
{
    const int key = event.key();
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
        return key; // the toolkit's codes of these are their code points
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return key - Qt::Key_F1 + FirstFunctionKey;
    const auto* found =
        std::find_if(Named.begin(), Named.end(), [&](const auto& n) { return n.first == key; });
    return found == Named.end() ? 0 : found->second;
}

bool IsTyped(const QKeyEvent& event)
{
    return !(event.modifiers() & (Qt::AltModifier | Qt::MetaModifier));
}

} // namespace velmo::qt

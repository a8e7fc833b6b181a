#include "Control.h"

#include "Form.h"

namespace velmo::controls {

Control::Control(Form& form, ControlKind kind, std::string name, Bounds bounds)
    : Name(std::move(name))
    , Kind(kind)
    , Left(*this, bounds.left)
    , Top(*this, bounds.top)
    , Width(*this, bounds.width)
    , Height(*this, bounds.height)
{
    form.Add(*this);
}

void Control::PropertyChanged()
{
    if (Changed)
        Changed();
}

} // namespace velmo::controls

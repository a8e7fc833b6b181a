#include "Form.h"

namespace velmo::controls {

Form::Form(std::string name, std::string caption, double width, double height, BorderStyle border)
    : Name(std::move(name))
    , Border(border)
    , Caption(*this, std::move(caption))
    , Width(*this, width)
    , Height(*this, height)
{}

const std::vector<Control*>& Form::Controls() const
{
    return m_controls;
}

void Form::Add(Control& control)
{
    m_controls.push_back(&control);
}

void Form::Show()
{
    Visible = true;
}

void Form::Hide()
{
    Visible = false;
}

void Form::PropertyChanged()
{
    if (Changed)
        Changed();
}

} // namespace velmo::controls

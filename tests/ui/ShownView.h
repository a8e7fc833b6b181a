#pragma once

#include "ui/SmallForm.h"

#include <stdexcept>

namespace velmo::test {

/// A form and its window, shown with its text.
template<class FormType>
struct ShownView
{
    ShownView()
    {
        PaintCounter paints;
        form.Show();
        if (!WaitUntil([&] { return paints.Count(form.Name) >= 1 && view.isActiveWindow(); }))
            throw std::runtime_error("the form was not painted");
        ServeEvents();
    }

    FormType form;
    qt::FormView view{form};
};

} // namespace velmo::test

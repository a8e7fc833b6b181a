#include "TagFields.h"

#include <array>
#include <cstddef>

namespace velmo::tags {

namespace {

struct Mark
{
    std::string_view name;
    std::string TagFields::*field;
};

constexpr std::array Marks = {
    Mark{"%ARTI", &TagFields::artist   },
    Mark{"%TITL", &TagFields::title    },
    Mark{"%ALBM", &TagFields::album    },
    Mark{"%CMNT", &TagFields::comment  },
    Mark{"%COMP", &TagFields::composer },
    Mark{"%COPY", &TagFields::copyright},
    Mark{"%GNRE", &TagFields::genre    },
    Mark{"%YEAR", &TagFields::year     },
    Mark{"%TRCK", &TagFields::track    },
};

const Mark* MarkAt(std::string_view text)
{
    for (const Mark& mark : Marks)
        if (text.starts_with(mark.name))
            return &mark;
    return nullptr;
}

} // namespace

std::string Fill(std::string_view format, const TagFields& fields)
{
    std::string filled;
    while (!format.empty()) {
        if (const Mark* mark = MarkAt(format)) {
            filled += fields.*(mark->field);
            format.remove_prefix(mark->name.size());
        } else {
            filled += format.front();
            format.remove_prefix(1);
        }
    }
    return filled;
}

} // namespace velmo::tags

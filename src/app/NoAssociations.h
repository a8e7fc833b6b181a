#pragma once

#include "ports/Associations.h"

namespace velmo {

/// A desktop that can't be told which program opens a kind of file: every request is lost.
class NoAssociations final : public ports::Associations
{
public:
    void AssociateExtension(const std::string& /*extension*/, bool /*on*/) override {}
    void AssociateAudioCD(bool /*on*/) override {}
    void RegisterProgId() override {}
};

} // namespace velmo

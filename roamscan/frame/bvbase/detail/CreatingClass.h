#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>

namespace Bv_1_1::detail
{

/// The class record of a class of this library whose instances are created by a function.
class CreatingClass : public oVClass
{
public:
    using Make = BaseNode* (*)();

    CreatingClass(wchar_t const* name, oVClass const* parent, Make make)
        : oVClass(name, parent, Module::library(), ClassVersion{0}), make_(make)
    {}

    [[nodiscard]] BaseNode* create() const override { return make_(); }

private:
    Make make_;
};

} // namespace Bv_1_1::detail

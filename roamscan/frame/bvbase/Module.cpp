#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <algorithm>

namespace Bv_1_1
{

Module::Module() = default;
Module::~Module() = default;

Module& Module::library()
{
    static Module module;
    return module;
}

bool Module::internalInit(oV::Roamscan::ImageHandle image)
{
    if (image == nullptr || isAttached()) {
        return image != nullptr && image_ == image;
    }
    for (oVClass* const record : entered()) {
        record->initClassStatics();
    }
    image_ = image;
    return true;
}

void Module::internalTerm()
{
    if (!isAttached()) {
        return;
    }
    std::vector<oVClass*> records = entered();
    std::reverse(records.begin(), records.end());
    for (oVClass* const record : records) {
        record->clearClassStatics();
    }
    image_ = nullptr;
}

std::vector<oVClass const*> Module::classes() const
{
    std::lock_guard const guard(lock_);
    return {classes_.begin(), classes_.end()};
}

void Module::enter(oVClass* record) const
{
    std::lock_guard const guard(lock_);
    classes_.push_back(record);
}

void Module::withdraw(oVClass* record) const noexcept
{
    std::lock_guard const guard(lock_);
    std::erase(classes_, record);
}

// Returns a copy, so that no lock is held while the records are called.
std::vector<oVClass*> Module::entered() const
{
    std::lock_guard const guard(lock_);
    return classes_;
}

} // namespace Bv_1_1

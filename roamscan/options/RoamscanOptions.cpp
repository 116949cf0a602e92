#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>

#include <new>

namespace oV::Roamscan
{

using Bv_1_1::BaseNode;
using Bv_1_1::CriticalSection;
using Bv_1_1::SmartPtr;

class ROAMSCAN_NO_EXPORT RoamscanOptions::ClassCreator : public Bv_1_1::oVClass
{
public:
    ClassCreator()
        : oVClass(L"RoamscanOptions", BaseNode::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0})
    {}

    void initClassStatics() override { initStatics(); }
    void clearClassStatics() override { clearStatics(); }
};

Bv_1_1::oVClass const* RoamscanOptions::Class()
{
    static ClassCreator record;
    return &record;
}

Bv_1_1::oVClass const* RoamscanOptions::getClassType() const
{
    return Class();
}

RoamscanOptions::RoamscanOptions(RoamscanOptionsCont* options) : m_opts(options)
{
    CriticalSection::Access const access(lock);
    if (instance) {
        detail::throwInternalError(L"RoamscanOptions singleton already exists.",
                                   "oV::Roamscan::RoamscanOptions::RoamscanOptions",
                                   __FILE__,
                                   __LINE__);
    }
}

RoamscanOptions::RoamscanOptions(RoamscanOptions const& other) noexcept = default;

// NOLINTBEGIN(performance-move-constructor-init): the source keeps its container
RoamscanOptions::RoamscanOptions(RoamscanOptions&& other) noexcept
    : RoamscanOptions(static_cast<RoamscanOptions const&>(other))
{}
// NOLINTEND(performance-move-constructor-init)

RoamscanOptions::~RoamscanOptions() = default;

void RoamscanOptions::setup(RoamscanOptionsCont* options)
{
    CriticalSection::Access const access(lock);
    instance = SmartPtr<RoamscanOptions>(new RoamscanOptions(options));
}

SmartPtr<RoamscanOptions> RoamscanOptions::the()
{
    CriticalSection::Access const access(lock);
    return instance;
}

bool RoamscanOptions::available()
{
    CriticalSection::Access const access(lock);
    return static_cast<bool>(instance);
}

std::unique_ptr<CriticalSection::Access> RoamscanOptions::getLock()
{
    return std::unique_ptr<CriticalSection::Access>(new (std::nothrow) CriticalSection::Access(lock));
}

SmartPtr<RoamscanOptionsCont> RoamscanOptions::getOpts()
{
    if (!lock.tryEnter()) {
        return nullptr; // another thread holds the lock
    }
    bool const wasHeld = lock.holdCount() > 1;
    lock.leave();
    if (!wasHeld || !the()) {
        return nullptr;
    }
    return the()->m_opts;
}

void RoamscanOptions::cleanUp()
{
    CriticalSection::Access const access(lock);
    if (!instance) {
        return;
    }
    if (instance->m_opts) {
        instance->m_opts->rmAllCustomAttributes();
        instance->m_opts->updateToCurrentOptions(); // both lists become empty
    }
    instance->setDefaultOptions();
}

void RoamscanOptions::setDefaultOptions() // NOLINT(readability-convert-member-functions-to-static): interface
{
    setOption<bool>(L"Calculate3DTrajectory", true);
    setOption<bool>(L"ShowDebug2DWindow", false);
}

void RoamscanOptions::initStatics() {}

void RoamscanOptions::clearStatics() {}

} // namespace oV::Roamscan

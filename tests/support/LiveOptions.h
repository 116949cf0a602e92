#pragma once

#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>

#include <gtest/gtest.h>

namespace support
{

/// A container on which init() was called.
inline Bv_1_1::SmartPtr<oV::Roamscan::RoamscanOptionsCont> madeOptionsContainer()
{
    using oV::Roamscan::RoamscanOptionsCont;
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    Bv_1_1::SmartPtr<RoamscanOptionsCont> container(new RoamscanOptionsCont(fresh, nullptr));
    container->init(fresh, nullptr);
    return container;
}

/// The live container. The first call creates the options. They exist until the process ends.
inline Bv_1_1::SmartPtr<oV::Roamscan::RoamscanOptionsCont> liveOptions()
{
    static bool const isUp = [] {
        oV::Roamscan::RoamscanOptionsHost::setup(madeOptionsContainer().get());
        return true;
    }();
    EXPECT_TRUE(isUp);
    auto const access = oV::Roamscan::RoamscanOptions::getLock();
    return oV::Roamscan::RoamscanOptions::getOpts();
}

/// The number of options, without the static attributes.
inline unsigned int optionCount()
{
    return liveOptions()->getNumAttributes() - liveOptions()->getNumStaticAttributes();
}

/// Tests that begin with the two options of the library and no others.
class LiveOptionsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        liveOptions();
        oV::Roamscan::RoamscanOptions::cleanUp();
    }
};

} // namespace support

#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Transform.h>
#include <roamscan/trajectorydata/detail/DrawTrajectory.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Object;
using oV::ObjectAttribute;
using oV::Observer;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using CreateType = Bv_1_1::BaseNode::CreateType;
using Point = Bv_1_1::Vec3d<double>;

/// The calls in order. One of them can be made to fail.
struct Calls
{
    std::vector<std::string> log;
    int alive = 0;
    std::string failsAt;

    void note(std::string const& call)
    {
        log.push_back(call);
        if (call == failsAt) {
            throw std::runtime_error(call);
        }
    }
};

Calls calls;

std::string text(String const& value)
{
    return value.stringAnsi();
}

std::string text(double value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

std::string text(Point const& point)
{
    return text(point.x) + ' ' + text(point.y) + ' ' + text(point.z);
}

std::string text(void const* pointer)
{
    return pointer == nullptr ? "null" : "a pointer";
}

std::string text(CreateType type)
{
    return std::to_string(static_cast<unsigned int>(type));
}

template <typename T>
class RecordingAttribute : public ObjectAttribute<T>
{
public:
    explicit RecordingAttribute(std::string name) : name_(std::move(name)) {}

    bool assignFrom(T const* newValue, Observer* observer, void* parameter) override
    {
        calls.note(name_ + " = " + text(*newValue) + ", " + text(observer) + ", " + text(parameter));
        return ObjectAttribute<T>::assignFrom(newValue, observer, parameter);
    }

private:
    std::string name_;
};

/// The common members of the three classes of objects.
template <typename Base>
class Recording : public Base
{
public:
    Recording(char const* name, CreateType type, Base const* source) : Base(type, source), name_(name)
    {
        calls.note(name_ + '(' + text(type) + ", " + text(source) + ')');
        ++calls.alive;
    }

    bool init(CreateType type, Object const* source) override
    {
        calls.note(name_ + ".init(" + text(type) + ", " + text(source) + ')');
        return Base::init(type, source);
    }

    bool setName(String const& name, int reserved) override
    {
        calls.note(name_ + ".setName(" + text(name) + ", " + std::to_string(reserved) + ')');
        return Base::setName(name, reserved);
    }

    Object::AttributePointer attribute(unsigned int index) override
    {
        switch (index) {
        case 0:
            return &title_;
        case 7:
            return &position_;
        case 9:
            return &size_;
        default:
            return {};
        }
    }

protected:
    ~Recording() override { --calls.alive; }

    // NOLINTNEXTLINE(readability-identifier-naming): the classes derived from it read it
    std::string name_;

private:
    RecordingAttribute<String> title_{name_ + "[0]"};
    RecordingAttribute<Point> position_{name_ + "[7]"};
    RecordingAttribute<double> size_{name_ + "[9]"};
};

class RecordingTransform : public Recording<oV::Transform>
{
public:
    RecordingTransform(CreateType type, oV::Transform const* source) : Recording("Transform", type, source) {}

    bool addChild(Object* child, int place)
    {
        calls.note("addChild(" + text(String(child->getClassType()->name())) + ", " + std::to_string(place) +
                   ')');
        return Object::addChild(child, place);
    }
};

class RecordingLine : public Recording<oV::Line>
{
public:
    RecordingLine(CreateType type, oV::Line const* source) : Recording("Line", type, source) {}

    void setKey(String const& key) override { calls.note("setKey(" + text(key) + ')'); }
    void appendPoint(Point const& point) override { calls.note("appendPoint(" + text(point) + ')'); }
};

class RecordingSphere : public Recording<oV::Sphere>
{
public:
    RecordingSphere(CreateType type, oV::Sphere const* source) : Recording("Sphere", type, source) {}
};

class DrawTrajectoryTest : public testing::Test
{
protected:
    void SetUp() override { calls = {}; }
    void TearDown() override { EXPECT_EQ(calls.alive, 0); }

    /// The second node is at the origin.
    static TrajectoryData twoNodes()
    {
        TrajectoryData store;
        store.nodes.emplace_back(1.0, TrafoT<double>::Translation({1, 2, 3}));
        store.nodes.emplace_back(2.5, TrafoT<double>::Identity());
        store.devicePositions[Device::Device0] = TrafoT<double>::Identity();
        return store;
    }

    static SmartPtr<RecordingTransform> draw(bool withNodes, Device device = Device::Device0)
    {
        return oV::Roamscan::detail::drawTrajectory<RecordingTransform, RecordingLine, RecordingSphere>(
            twoNodes(), withNodes, L"walk", device, device);
    }

    static inline std::vector<std::string> const beforeTheNodes{"Transform(0, null)",
                                                                "Transform.init(0, null)",
                                                                "Transform[0] = walk, null, null",
                                                                "Line(0, null)",
                                                                "Line.init(0, null)",
                                                                "Line[0] = walk, null, null",
                                                                "setKey(Line)"};
};

} // namespace

TEST(DrawTrajectory, ACoordinateAboveOrBelowZeroIsOffTheOrigin)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    using oV::Roamscan::detail::isOffOrigin;
    EXPECT_FALSE(isOffOrigin({0.0, -0.0, 0.0}));
    EXPECT_TRUE(isOffOrigin({1e-300, 0.0, 0.0}));
    EXPECT_TRUE(isOffOrigin({0.0, -1e-300, 0.0}));
    EXPECT_TRUE(isOffOrigin({0.0, 0.0, std::numeric_limits<double>::infinity()}));
    EXPECT_FALSE(isOffOrigin({nan, nan, nan}));
    EXPECT_FALSE(isOffOrigin({nan, 0.0, 0.0}));
    EXPECT_TRUE(isOffOrigin({nan, 0.0, -1.0}));
}

TEST(DrawTrajectory, TheRotationCountsForTheImageOfTheOrigin)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    TrafoT<double> const pose(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(nan, nan, nan, nan), true);
    auto const point = oV::Roamscan::detail::imageOfOrigin(pose);
    EXPECT_TRUE(std::isnan(point.x));
    EXPECT_TRUE(std::isnan(point.y));
    EXPECT_TRUE(std::isnan(point.z));
}

TEST_F(DrawTrajectoryTest, MakesItsCallsInOrder)
{
    auto const scene = draw(true);
    std::vector<std::string> expected = beforeTheNodes;
    expected.insert(expected.end(),
                    {"appendPoint(1 2 3)",
                     "Sphere(0, null)",
                     "Sphere.init(0, null)",
                     "Sphere[7] = 1 2 3, null, null",
                     "Sphere[9] = 0.01, null, null",
                     "Sphere.setName(Node_1, 0)",
                     "addChild(Sphere, 48)",
                     "Sphere(0, null)",
                     "Sphere.init(0, null)",
                     "Sphere[7] = 0 0 0, null, null",
                     "Sphere[9] = 0.01, null, null",
                     "Sphere.setName(Node_2.5, 0)",
                     "addChild(Sphere, 48)",
                     "addChild(Line, 48)"});
    EXPECT_EQ(calls.log, expected);
    EXPECT_EQ(calls.alive, 4);
}

TEST_F(DrawTrajectoryTest, MakesNoSpheresWithoutNodes)
{
    auto const scene = draw(false);
    std::vector<std::string> expected = beforeTheNodes;
    expected.insert(expected.end(), {"appendPoint(1 2 3)", "addChild(Line, 48)"});
    EXPECT_EQ(calls.log, expected);
}

TEST_F(DrawTrajectoryTest, AMissingDeviceIsNoticedAfterTheTwoObjectsAndReleasesThem)
{
    EXPECT_THROW(static_cast<void>(draw(true, Device::Device3)), oV::InternalErrorException);
    EXPECT_EQ(calls.log, beforeTheNodes);
    EXPECT_EQ(calls.alive, 0);
}

TEST_F(DrawTrajectoryTest, AFailureOfAnyCallReleasesAllObjects)
{
    static_cast<void>(draw(true));
    std::vector<std::string> const all = calls.log;
    for (std::string const& call : all) {
        calls = {};
        calls.failsAt = call;
        EXPECT_THROW(static_cast<void>(draw(true)), std::runtime_error) << call;
        EXPECT_EQ(calls.log.back(), call);
        EXPECT_EQ(calls.alive, 0) << call;
    }
}

// GCC for Windows exports a constant of an exported class only if a source of the DLL declares it again. A
// plug-in needs it where it takes a reference to the constant. Compiled only there.

#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/formats/KeyTable.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/scene/ObjNames.h>
#include <roamscan/frame/scene/Object.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/geometry/TimeWindow.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <cstddef>
#include <cstdint>

constexpr std::uint32_t Bv_1_1::BaseNode::releasedMark;

constexpr unsigned int oV::AttrContainer::unknownToken;
constexpr unsigned int oV::AttrContainer::nameToken;
constexpr std::uint32_t oV::AttrDefinition::customFlag;
constexpr std::uint16_t oV::Attribute::silentFlag;
constexpr std::uint16_t oV::Attribute::weakValueFlag;
constexpr unsigned int oV::Attribute::valueToken;
constexpr unsigned int oV::KeyTable::unknownToken;
constexpr std::size_t oV::Models::logCapacity;
constexpr std::uint32_t oV::Observer::ParamsEx::leaving;
constexpr std::uint32_t oV::Observer::ParamsEx::announcing;
constexpr unsigned int oV::ObjNames::line;
constexpr unsigned int oV::Object::nameAttribute;
constexpr unsigned int oV::Sphere::positionAttribute;
constexpr unsigned int oV::Sphere::sizeAttribute;

constexpr std::size_t oV::Roamscan::RoamscanOptionsCont::definitionCount;
constexpr int64 oV::Roamscan::TimeWindow::unsetTime;

// The operations of containers that are hooks of the host's library and are not used by this library.

#include <roamscan/frame/attributes/AttrContainer.h>

namespace oV
{

using Bv_1_1::String;

unsigned int AttrContainer::reservedQuery1() const
{
    return 0;
}

unsigned int AttrContainer::reservedQuery2() const
{
    return 0;
}

AttrContainer* AttrContainer::checkCreateChildField(String const&)
{
    return nullptr;
}

AttrContainer* AttrContainer::checkCreateDefaultChildField(String const&)
{
    return nullptr;
}

void AttrContainer::fieldVisitor(std::function<void(AttrContainer&)> const&) {}

void AttrContainer::fieldAndStructureVisitor(std::function<void(AttrContainer&)> const& visit)
{
    visit(*this);
    fieldVisitor(visit);
}

String AttrContainer::toJson() const
{
    return String::NIL;
}

bool AttrContainer::prepareUpdateFromJson(String const&)
{
    return false;
}

bool AttrContainer::updateAfterCreationFromJson(String const&)
{
    return false;
}

AttrContainer* AttrContainer::lookupField(String const&) const
{
    return nullptr;
}

unsigned int AttrContainer::convertToNewFieldToken(unsigned int token) const
{
    return token;
}

String AttrContainer::getDisplayName() const
{
    return getName();
}

bool AttrContainer::setDisplayName(String const& name)
{
    return setName(name, 0);
}

bool AttrContainer::isNameUnique(String const&) const
{
    return true;
}

bool AttrContainer::checkName(String const&) const
{
    return true;
}

String AttrContainer::generateUniqueName(String const& proposed) const
{
    return proposed;
}

String AttrContainer::getFieldRegistryPrefix() const
{
    return String::NIL;
}

void AttrContainer::reservedHook() {}

bool AttrContainer::reservedFlag() const
{
    return false;
}

bool AttrContainer::hasUuid() const
{
    return false;
}

} // namespace oV

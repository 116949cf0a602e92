#pragma once

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

/// The names that tests of attributes and containers share, and attributes in containers.
namespace support::attributes
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Attr;
using oV::AttrContainer;
using oV::AttrDefinition;
using oV::Attribute;
using oV::AttrType;
using oV::CustAttr;
using oV::StringList;
using CreateType = Bv_1_1::BaseNode::CreateType;

/// A token that no attribute has.
constexpr unsigned int unknown = 0xFFFFFFFF;

/// A container on which init() was called.
inline SmartPtr<AttrContainer> initialisedContainer()
{
    SmartPtr<AttrContainer> container(new AttrContainer(CreateType::Fresh, nullptr));
    container->init(CreateType::Fresh, nullptr);
    return container;
}

/// Adds a custom attribute with a value.
/// @return the attribute, with the value that it has in the container
template <typename T>
Attr<T>* add(AttrContainer& container, String const& name, T const& value)
{
    auto* const attribute = new CustAttr<T>(CreateType::Fresh, nullptr);
    attribute->assignFrom(value, nullptr, nullptr);
    EXPECT_TRUE(container.addAttribute(attribute, name));
    return attribute;
}

/// The value of the first attribute with a name, which must be of this type.
template <typename T>
T valueOf(AttrContainer const& container, String const& name)
{
    Attribute const* const attribute = container.getAttribute(container.getAttrToken(name));
    if (attribute == nullptr || !attribute->getClassType()->isDerivedFrom(Attr<T>::Class())) {
        ADD_FAILURE() << "no attribute of this name and type";
        return T();
    }
    return static_cast<Attr<T> const*>(attribute)->getValue();
}

} // namespace support::attributes

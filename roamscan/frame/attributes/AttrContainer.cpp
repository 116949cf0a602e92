#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/detail/AnyToken.h>
#include <roamscan/frame/attributes/detail/AttrKinds.h>
#include <roamscan/frame/attributes/detail/AttributeBlock.h>
#include <roamscan/frame/attributes/detail/CustomAttributes.h>
#include <roamscan/frame/attributes/detail/KeptValues.h>
#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/bvbase/detail/FreshNode.h>
#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/observers/PreserveObserverRelation.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace oV
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;

namespace
{

constexpr unsigned int largestStaticToken = 65535;

struct DropBlock
{
    void operator()(detail::AttributeBlock* block) const noexcept { block->unref(); }
};

// The definitions of the attributes that every container has.
AttrDefinition const* definitionsOfAll()
{
    static std::array<AttrDefinition, 2> const rows = {
        {{AttrContainer::nameToken, L"Name", AttrType::String, 0}, {0, String::NIL, AttrType::End, 0}}};
    return rows.data();
}

String const& withoutNil(String const& name)
{
    return name.isNil() ? String::EMPTY : name;
}

AttrContainer const* usedSource(Bv_1_1::BaseNode::CreateType type, AttrContainer const* source)
{
    return type == Bv_1_1::BaseNode::CreateType::NoSource ? nullptr : source;
}

} // namespace

Bv_1_1::oVClass const* AttrContainer::Class()
{
    static Bv_1_1::detail::CreatingClass const record(L"AttrContainer", Observer::Class(), []() -> BaseNode* {
        return new AttrContainer(CreateType::Fresh, nullptr);
    });
    return &record;
}

AttrType AttrContainer::getTypeFromStringKey(String const& key)
{
    detail::AttrKind const* const kind = detail::attrKind(key);
    return kind == nullptr ? AttrType::End : kind->type;
}

AttrContainer::AttrContainer(CreateType, AttrContainer const*) {}

AttrContainer::~AttrContainer()
{
    endRelations();
    attributeVisitor([this](Attribute& attribute) { detach(attribute); });
}

Bv_1_1::oVClass const* AttrContainer::getClassType() const
{
    return Class();
}

// Set-up and copies.

bool AttrContainer::init(CreateType type, AttrContainer const* source)
{
    if (!createAttributes(definitionsOfAll(), type, source)) {
        return false;
    }
    AttrContainer const* const model = usedSource(type, source);
    if (ObserverRelationTable* const relations = srcToCopyTable()) {
        relations->enter(model, this);
    }
    if (model != nullptr) {
        copyCustomAttributes(type, *model);
    }
    return true;
}

bool AttrContainer::createAttributes(AttrDefinition const* definitions,
                                     CreateType type,
                                     AttrContainer const* source)
{
    if (!canCreate(definitions)) {
        return false;
    }
    std::size_t size = 0;
    std::size_t places = statics_.size();
    for (AttrDefinition const* row = definitions; !row->name.isNil(); ++row) {
        size += detail::attrKind(row->type)->size;
        places = std::max(places, std::size_t{row->token} + 1);
    }
    std::unique_ptr<detail::AttributeBlock, DropBlock> const block(new detail::AttributeBlock(size));
    statics_.resize(places);
    std::size_t offset = 0;
    AttrContainer const* const model = usedSource(type, source);
    for (AttrDefinition const* row = definitions; !row->name.isNil(); ++row) {
        Attribute const* const original = model != nullptr && row->token < model->statics_.size()
                                              ? model->getAttribute(row->token)
                                              : nullptr;
        Attribute* const made = row->createAttr(type, original, block->at(offset));
        statics_[row->token] = {SmartPtr<Attribute>(made), row};
        made->block_ = block.get();
        block->ref();
        attach(*made, row->name);
        if (ObserverRelationTable* const relations = srcToCopyTable()) {
            relations->enter(original, made);
        }
        offset += detail::attrKind(row->type)->size;
    }
    return true;
}

bool AttrContainer::canCreate(AttrDefinition const* definitions) const
{
    if (definitions == nullptr) {
        return false;
    }
    for (AttrDefinition const* row = definitions; !row->name.isNil(); ++row) {
        bool const isTaken = row->token < statics_.size() && statics_[row->token].attribute;
        bool const isRepeated = std::any_of(
            definitions, row, [row](AttrDefinition const& earlier) { return earlier.token == row->token; });
        if (row->token > largestStaticToken || isTaken || isRepeated ||
            detail::attrKind(row->type) == nullptr) {
            return false;
        }
    }
    return true;
}

void AttrContainer::copyCustomAttributes(CreateType type, AttrContainer const& source)
{
    ObserverRelationTable* const relations = srcToCopyTable();
    for (unsigned int token = source.getNumStaticAttributes(); token < source.getNumAttributes(); ++token) {
        Attribute const& original = *source.getAttribute(token);
        Bv_1_1::detail::FreshNode<Attribute> copy(original.duplicateAttr(type, false));
        Attribute* const added = copy.get();
        addAttribute(copy.release(), original.getName());
        if (relations != nullptr) {
            relations->enter(&original, added);
        }
    }
    if (source.kept_ != nullptr) {
        kept_ = std::make_unique<detail::KeptValues>(*source.kept_);
    }
}

AttrContainer* AttrContainer::duplicate(CreateType type) const
{
    BaseNode* const made = getClassType()->create();
    if (made == nullptr) {
        return nullptr;
    }
    Bv_1_1::detail::FreshNode<AttrContainer> copy(static_cast<AttrContainer*>(made));
    copy->init(type, this);
    return copy.release();
}

AttrContainer* AttrContainer::duplicateAll(CreateType type) const
{
    PreserveObserverRelation const relations;
    Bv_1_1::detail::FreshNode<AttrContainer> copy(duplicate(type));
    if (copy != nullptr) {
        copy->updateObservers(*relations.table());
    }
    return copy.release();
}

bool AttrContainer::copyFrom(Observer const* source)
{
    if (source == nullptr || !source->getClassType()->isDerivedFrom(Class())) {
        return false;
    }
    auto const& other = static_cast<AttrContainer const&>(*source);
    for (unsigned int token = 0; token < other.getNumAttributes(); ++token) {
        Attribute const* const theirs = other.getAttribute(token);
        Attribute* const mine =
            theirs == nullptr
                ? nullptr
                : getAttribute(token == nameToken ? nameToken : getAttrToken(theirs->getName()));
        if (mine != nullptr) {
            mine->assignAttr(*theirs);
        }
    }
    return true;
}

void AttrContainer::updateObservers(ObserverRelationTable const& table)
{
    Observer::updateObservers(table);
    attributeVisitor([&table](Attribute& attribute) { attribute.updateObservers(table); });
}

bool AttrContainer::isEqualTo(AttrContainer const& other) const
{
    if (getClassType() != other.getClassType() || getNumAttributes() != other.getNumAttributes() ||
        getNumStaticAttributes() != other.getNumStaticAttributes())
    {
        return false;
    }
    for (unsigned int token = 0; token < getNumAttributes(); ++token) {
        Attribute const* const mine = getAttribute(token);
        Attribute const* const theirs = other.getAttribute(token);
        if ((mine == nullptr) != (theirs == nullptr)) {
            return false;
        }
        if (mine != nullptr && (mine->getName() != theirs->getName() || mine->differsAttr(*theirs))) {
            return false;
        }
    }
    return true;
}

// Attributes.

void AttrContainer::attach(Attribute& attribute, String const& name)
{
    attribute.name_ = name;
    attribute.container_ = this;
    attribute.setLocation(this);
}

void AttrContainer::detach(Attribute& attribute) noexcept
{
    attribute.container_ = nullptr;
    if (attribute.getLocation(detail::anyToken) == this) {
        attribute.setLocation(nullptr);
    }
}

bool AttrContainer::addAttribute(Attribute* attribute, String const& name)
{
    if (attribute == nullptr || attribute->container_ != nullptr) {
        return false;
    }
    SmartPtr<Attribute> const owner(attribute);
    if (findCustom(withoutNil(name), attribute->getClassType()->name()) != nullptr) {
        return false;
    }
    if (custom_ == nullptr) {
        custom_ = std::make_unique<detail::CustomAttributes>();
    }
    custom_->add(attribute, withoutNil(name));
    attach(*attribute, withoutNil(name));
    applyKeptValue(*attribute);
    return true;
}

Attribute* AttrContainer::findCustom(String const& name, String const& typeKey) const
{
    constexpr auto none = detail::CustomAttributes::none;
    for (std::size_t place = custom_ == nullptr ? none : custom_->find(name); place != none;
         place = custom_->next(place))
    {
        if (typeKey.compare(custom_->at(place)->getClassType()->name()) == 0) {
            return custom_->at(place);
        }
    }
    return nullptr;
}

bool AttrContainer::rmAllCustomAttributes()
{
    auto const removed = std::move(custom_); // first, because their observers may use the container
    kept_.reset();
    if (removed != nullptr) {
        for (std::size_t place = 0; place < removed->size(); ++place) {
            detach(*removed->at(place));
        }
    }
    return true;
}

unsigned int AttrContainer::getNumStaticAttributes() const noexcept
{
    return static_cast<unsigned int>(statics_.size());
}

unsigned int AttrContainer::getNumAttributes() const noexcept
{
    return getNumStaticAttributes() + static_cast<unsigned int>(custom_ == nullptr ? 0 : custom_->size());
}

Attribute* AttrContainer::getAttribute(unsigned int token) const noexcept
{
    if (token < statics_.size()) {
        return statics_[token].attribute.get();
    }
    std::size_t const place = token - statics_.size();
    return custom_ != nullptr && place < custom_->size() ? custom_->at(place) : nullptr;
}

// Names.

Observer* AttrContainer::inqObserver(String const& name)
{
    return getAttribute(getAttrToken(name));
}

String AttrContainer::getName() const
{
    Attribute const* const attribute = statics_.empty() ? nullptr : getAttribute(nameToken);
    return attribute == nullptr ? String::NIL : static_cast<Attr<String> const*>(attribute)->getValue();
}

bool AttrContainer::setName(String const& name, int)
{
    Attribute* const attribute = statics_.empty() ? nullptr : getAttribute(nameToken);
    return attribute != nullptr && static_cast<Attr<String>*>(attribute)->assignFrom(name, nullptr, nullptr);
}

unsigned int AttrContainer::getAttrToken(String const& name) const
{
    String const& text = withoutNil(name);
    for (unsigned int token = nameToken + 1; token < statics_.size(); ++token) {
        AttrDefinition const* const definition = statics_[token].definition;
        if (definition != nullptr && definition->name == text) {
            return token;
        }
    }
    std::size_t const place = custom_ == nullptr ? detail::CustomAttributes::none : custom_->find(text);
    return place == detail::CustomAttributes::none ? unknownToken
                                                   : static_cast<unsigned int>(statics_.size() + place);
}

String AttrContainer::getAttrName(unsigned int token) const
{
    Attribute const* const attribute = getAttribute(token);
    return attribute == nullptr ? String::NIL : attribute->getName();
}

AttrDefinition const* AttrContainer::getAttrDefinition(unsigned int token) const
{
    return token < statics_.size() ? statics_[token].definition : nullptr;
}

unsigned int AttrContainer::getFieldToken(String const& name) const
{
    auto const found =
        std::find_if(statics_.begin(), statics_.end(), [&name](StaticAttribute const& candidate) {
            return candidate.definition != nullptr && candidate.definition->name == name;
        });
    return found == statics_.end() ? unknownToken : static_cast<unsigned int>(found - statics_.begin());
}

String AttrContainer::getFieldName(unsigned int token) const
{
    AttrDefinition const* const definition = AttrContainer::getAttrDefinition(token);
    return definition == nullptr ? String::NIL : definition->name;
}

// Visitors.

void AttrContainer::observerVisitor(std::function<void(Observer&)> const& visit)
{
    visit(*this);
    attributeVisitor(visit);
}

void AttrContainer::attributeVisitor(std::function<void(Attribute&)> const& visit)
{
    for (unsigned int token = 0; token < getNumAttributes(); ++token) {
        if (Attribute* const attribute = getAttribute(token)) {
            visit(*attribute);
        }
    }
}

} // namespace oV

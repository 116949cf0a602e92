#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/detail/FreshNode.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/BlockUpdateObservers.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/detail/OptionsListLock.h>

#include <memory>
#include <utility>

namespace oV::Roamscan
{

using Bv_1_1::CriticalSection;
using Bv_1_1::String;
using Strings = std::vector<String>;

namespace
{

constexpr wchar_t const* className = L"RoamscanOptionsCont";
constexpr unsigned int namesToken = 1;
constexpr unsigned int typesToken = 2;

/// The attribute with the token, if it is a list of strings: before init() any option may have the token.
Attr<Strings>* listAttribute(AttrContainer const& container, unsigned int token)
{
    Attribute* const attribute = container.getAttribute(token);
    bool const isList =
        attribute != nullptr && attribute->getClassType()->isDerivedFrom(Attr<Strings>::Class());
    return isList ? static_cast<Attr<Strings>*>(attribute) : nullptr;
}

Strings stringsOf(AttrContainer const& container, unsigned int token)
{
    Attr<Strings> const* const attribute = listAttribute(container, token);
    return attribute != nullptr ? attribute->getValue() : Strings();
}

void assignList(AttrContainer const& container, unsigned int token, Strings const& list)
{
    CriticalSection::Access const access(detail::optionsListLock);
    if (Attr<Strings>* const attribute = listAttribute(container, token)) {
        attribute->assignFrom(list, nullptr, nullptr);
    }
}

} // namespace

class ROAMSCAN_NO_EXPORT RoamscanOptionsCont::ClassCreator : public Bv_1_1::oVClass
{
public:
    ClassCreator()
        : oVClass(className, AttrContainer::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0})
    {}
    ClassCreator(ClassCreator const&) = delete;
    ClassCreator& operator=(ClassCreator const&) = delete;
    ~ClassCreator() override { clearStatics(); }

    [[nodiscard]] Bv_1_1::BaseNode* create() const override
    {
        return new RoamscanOptionsCont(CreateType::Fresh, nullptr);
    }
    void initClassStatics() override { initStatics(); }
    void clearClassStatics() override { clearStatics(); }
};

constinit KeyTable* RoamscanOptionsCont::attrNames = nullptr;
constinit std::map<unsigned int const, AttrDefinition const*>* RoamscanOptionsCont::attrDefMap = nullptr;

Bv_1_1::oVClass const* RoamscanOptionsCont::Class()
{
    static ClassCreator record;
    return &record;
}

Bv_1_1::oVClass const* RoamscanOptionsCont::getClassType() const
{
    return Class();
}

void RoamscanOptionsCont::initStatics()
{
    if (attrNames == nullptr) {
        auto names = std::make_unique<KeyTable>();
        for (AttrDefinition const& row : attrDefs) {
            if (!row.name.isNil()) {
                names->addEntry(row.token, row.name);
            }
        }
        attrNames = names.release();
    }
    if (attrDefMap == nullptr) {
        auto definitions = std::make_unique<std::map<unsigned int const, AttrDefinition const*>>();
        for (AttrDefinition const& row : attrDefs) {
            if (!row.name.isNil()) {
                definitions->emplace(row.token, &row);
            }
        }
        attrDefMap = definitions.release();
    }
}

void RoamscanOptionsCont::clearStatics()
{
    delete std::exchange(attrNames, nullptr);
    delete std::exchange(attrDefMap, nullptr);
}

AttrContainer* RoamscanOptionsCont::checkCreateField(String const& name)
{
    return name.compare(className) == 0 ? new RoamscanOptionsCont(CreateType::Fresh, nullptr) : nullptr;
}

RoamscanOptionsCont::RoamscanOptionsCont(CreateType type, RoamscanOptionsCont const* source)
    : AttrContainer(type, source)
{}

RoamscanOptionsCont::~RoamscanOptionsCont() = default;

AttrContainer* RoamscanOptionsCont::lookupObject()
{
    return this;
}

unsigned int RoamscanOptionsCont::reservedQuery1() const
{
    return 2;
}

unsigned int RoamscanOptionsCont::reservedQuery2() const
{
    return 0xFFFFFFFF;
}

AttrContainer* RoamscanOptionsCont::duplicate(CreateType type) const
{
    RoamscanOptionsCont const* const source = type == CreateType::NoSource ? nullptr : this;
    Bv_1_1::detail::FreshNode<RoamscanOptionsCont> copy(new RoamscanOptionsCont(type, source));
    copy->init(type, source);
    return copy.release();
}

bool RoamscanOptionsCont::init(CreateType type, AttrContainer const* source)
{
    BlockUpdateObservers const scope(srcToCopyTable(), source != nullptr ? this : nullptr);
    bool const isSetUp = AttrContainer::init(type, source);
    createAttributes(attrDefs.data(), type, source);
    if (source == nullptr) {
        setName(Class()->name(), 0);
        OptionsNames(Strings());
        OptionsTypes(Strings());
    }
    return isSetUp;
}

unsigned int RoamscanOptionsCont::getAttrToken(String const& name) const
{
    unsigned int const token = attrNames != nullptr ? attrNames->keyToToken(name) : unknownToken;
    return token != unknownToken ? token : AttrContainer::getAttrToken(name);
}

String RoamscanOptionsCont::getAttrName(unsigned int token) const
{
    String const name = attrNames != nullptr ? attrNames->tokenToKey(token) : String::NIL;
    return name.isNil() ? AttrContainer::getAttrName(token) : name;
}

AttrDefinition const* RoamscanOptionsCont::getAttrDefinition(unsigned int token) const
{
    if (attrDefMap != nullptr) {
        auto const found = attrDefMap->find(token);
        if (found != attrDefMap->end()) {
            return found->second;
        }
    }
    return AttrContainer::getAttrDefinition(token);
}

void RoamscanOptionsCont::reservedHook() {}

bool RoamscanOptionsCont::reservedFlag() const
{
    return false;
}

Strings RoamscanOptionsCont::OptionsNames() const
{
    return stringsOf(*this, namesToken);
}

Strings RoamscanOptionsCont::OptionsTypes() const
{
    return stringsOf(*this, typesToken);
}

void RoamscanOptionsCont::OptionsNames(Strings const& names)
{
    assignList(*this, namesToken, names);
}

void RoamscanOptionsCont::OptionsTypes(Strings const& types)
{
    assignList(*this, typesToken, types);
}

void RoamscanOptionsCont::initializeCustomAttributes()
{
    Strings const names = OptionsNames();
    Strings const types = OptionsTypes();
    if (names.size() != types.size()) {
        return;
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        AttrDefinition const definition{
            0, names[i], getTypeFromStringKey(types[i]), AttrDefinition::customFlag};
        if (Attribute* const attribute = definition.createAttr(CreateType::Fresh, nullptr, nullptr)) {
            addAttribute(attribute, names[i]);
        }
    }
}

void RoamscanOptionsCont::updateToCurrentOptions()
{
    Strings names;
    Strings types;
    for (unsigned int token = getNumStaticAttributes(); token < getNumAttributes(); ++token) {
        Attribute const* const attribute = getAttribute(token);
        types.emplace_back(attribute->getClassType()->name());
        names.push_back(attribute->getName());
    }
    OptionsNames(names);
    OptionsTypes(types);
}

} // namespace oV::Roamscan

#pragma once

#include <roamscan/frame/attributes/AccessibleInterface.h>
#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/attributes/ValidationInterface.h>
#include <roamscan/frame/bvbase/SVec2d.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/platform/Export.h>

#include <functional>
#include <memory>
#include <vector>

namespace oV
{

namespace detail
{
class CustomAttributes;
class KeptValues;
} // namespace detail

/// A named holder of attributes: a block of static attributes, which its class defines, and a table of custom
/// attributes, which are added at run time under any names.
///
/// A token finds an attribute: below the number of static attributes it is a place in the block, from there
/// on a place in the table. The static attribute with token 0 is the container's own name; the names of all
/// other attributes can be looked up, at a cost that does not grow with the number of custom attributes.
///
/// A container is made in two steps, the constructor and init(), and owns its attributes. It is for many
/// readers or one writer.
///
/// **In model formats** a container writes one statement for each attribute: `field` for a static one,
/// `attribute` for a custom one, then its name and its type key, then a block that the attribute writes. In
/// the bare form `true` stands for `attribute` and `false` for `field`. What a reader finds for an attribute
/// that the container does not have, it keeps: addAttribute() applies it to the attribute of that name and
/// type that comes first, and writeTo() writes it back as long as none has come.
///
/// The order of the virtual operations is part of the binary interface. Several are hooks of the host's own
/// library that have no use here; they return a neutral value and say so.
class ROAMSCAN_EXPORT AttrContainer : public Observer, public AccessibleInterface, public ValidationInterface
{
public:
    /// Stands for no attribute.
    static constexpr unsigned int unknownToken = KeyTable::unknownToken;
    /// The token of the name.
    static constexpr unsigned int nameToken = 0;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The type of a type key, which is the name of an attribute's class record; AttrType::End if it is
    /// unknown.
    [[nodiscard]] static AttrType getTypeFromStringKey(Bv_1_1::String const& key);

    /// A container without attributes; init() makes those of the class. Both arguments are those of init().
    AttrContainer(CreateType type, AttrContainer const* source);
    AttrContainer(AttrContainer const&) = delete;
    AttrContainer& operator=(AttrContainer const&) = delete;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Takes over, silently, the values of the attributes that both containers have under the same name.
    /// @return false if `source` is no container
    bool copyFrom(Observer const* source) override;
    /// Also updates the observers of the attributes.
    void updateObservers(ObserverRelationTable const& table) override;
    /// The attribute of this name, or null.
    [[nodiscard]] Observer* inqObserver(Bv_1_1::String const& name) override;
    /// The value of the attribute with token 0; NIL before init().
    [[nodiscard]] Bv_1_1::String getName() const override;
    /// Reads the statements of a block, or up to the end of the input. Changes are silent. Attributes that
    /// the input does not have stay as they are.
    /// @return the status to keep of all statements (StatusCode::keep); a status that is not tolerated ends
    /// the reading at once, with the attributes read so far
    int readFrom(std::istream* stream, ReadContextBase* context) override;
    /// Writes all attributes, and what was kept.
    /// @return StatusCode::noContext for a null context, StatusCode::writeFailed if the stream's state is not
    /// clean
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;

    /// Without meaning here. @return 0
    [[nodiscard]] virtual unsigned int reservedQuery1() const;
    /// Without meaning here. @return 0
    [[nodiscard]] virtual unsigned int reservedQuery2() const;
    /// A new container of the same class with copies of all attributes; with the type NoSource, one as init()
    /// makes it without a source.
    /// @return without a reference
    [[nodiscard]] virtual AttrContainer* duplicate(CreateType type) const;
    /// duplicate(), with the relations of observers among the copied objects.
    [[nodiscard]] virtual AttrContainer* duplicateAll(CreateType type) const;
    /// A new child container for a field of this name. Containers have no children here. @return null
    [[nodiscard]] virtual AttrContainer* checkCreateChildField(Bv_1_1::String const& name);
    /// The same for a field that has a default. @return null
    [[nodiscard]] virtual AttrContainer* checkCreateDefaultChildField(Bv_1_1::String const& name);
    /// Makes the attributes of the class, and copies of the custom attributes of `source`.
    /// @param source null for none
    /// @return false if the container has been set up before
    virtual bool init(CreateType type, AttrContainer const* source);
    /// Whether the other container has the same class and the same attributes: names, types and values, in
    /// the same order.
    [[nodiscard]] virtual bool isEqualTo(AttrContainer const& other) const;
    /// Calls the function for each child container. There are none here.
    virtual void fieldVisitor(std::function<void(AttrContainer&)> const& visit);
    /// Calls the function for this container, then for each child container.
    virtual void fieldAndStructureVisitor(std::function<void(AttrContainer&)> const& visit);
    /// Calls the function for this container, then for each attribute.
    virtual void observerVisitor(std::function<void(Observer&)> const& visit);
    /// Calls the function for each attribute, in the order of the tokens.
    virtual void attributeVisitor(std::function<void(Attribute&)> const& visit);
    /// Containers have no JSON form here. @return NIL
    [[nodiscard]] virtual Bv_1_1::String toJson() const;
    /// Containers have no JSON form here. @return false
    virtual bool prepareUpdateFromJson(Bv_1_1::String const& json);
    /// Containers have no JSON form here. @return false
    virtual bool updateAfterCreationFromJson(Bv_1_1::String const& json);
    /// Starts a read: forgets what an earlier one has kept.
    virtual void initRead();
    /// Reads the current statement of the input: one attribute.
    virtual int readField(std::istream* stream, ReadContextBase* context);
    /// Writes one attribute. Nothing is written for a token without one.
    virtual int writeField(unsigned int token, std::ostream* stream, WriteContextBase* context) const;
    /// The token of a keyword of the input: that of the static attribute of this name.
    [[nodiscard]] virtual unsigned int lookupToken(Bv_1_1::String const& keyword) const;
    /// The child container of this name. Containers have no children here. @return null
    [[nodiscard]] virtual AttrContainer* lookupField(Bv_1_1::String const& name) const;
    /// The token that a token of an older version has now. Here: the same.
    [[nodiscard]] virtual unsigned int convertToNewFieldToken(unsigned int token) const;
    /// The name for people. Here: the name.
    [[nodiscard]] virtual Bv_1_1::String getDisplayName() const;
    /// Sets the name for people. Here: the name.
    virtual bool setDisplayName(Bv_1_1::String const& name);
    /// Whether no sibling has this name. Containers do not know siblings here. @return true
    [[nodiscard]] virtual bool isNameUnique(Bv_1_1::String const& name) const;
    /// Whether the container may have this name. @return true
    [[nodiscard]] virtual bool checkName(Bv_1_1::String const& name) const;
    /// A name that no sibling has. Here: the proposed one.
    [[nodiscard]] virtual Bv_1_1::String generateUniqueName(Bv_1_1::String const& proposed) const;
    /// Sets the name.
    /// @param mode not used here
    /// @return false before init(), and if an observer refuses
    virtual bool setName(Bv_1_1::String const& name, int mode);
    /// The token of the first attribute of this name, `unknownToken` if there is none. Static attributes come
    /// first. NIL counts as the empty name.
    /// @note The container's own name, token 0, is not found by a name, so an attribute may be called "Name".
    [[nodiscard]] virtual unsigned int getAttrToken(Bv_1_1::String const& name) const;
    /// The name of an attribute; NIL if there is none with this token.
    [[nodiscard]] virtual Bv_1_1::String getAttrName(unsigned int token) const;
    /// The definition of a static attribute; null for other tokens.
    [[nodiscard]] virtual AttrDefinition const* getAttrDefinition(unsigned int token) const;
    /// The tokens to write, in order, as ranges: the first in x, the last in y.
    [[nodiscard]] virtual std::vector<Bv_1_1::SVec2d<int>> getIOTokensList() const;
    /// The token of the static attribute that is written under this name, token 0 included.
    [[nodiscard]] virtual unsigned int getFieldToken(Bv_1_1::String const& name) const;
    /// The name that a static attribute is written under; NIL for other tokens.
    [[nodiscard]] virtual Bv_1_1::String getFieldName(unsigned int token) const;
    /// What goes before field names in the host's registry. @return NIL
    [[nodiscard]] virtual Bv_1_1::String getFieldRegistryPrefix() const;
    /// Without meaning here. Does nothing.
    virtual void reservedHook();
    /// Without meaning here. @return false
    [[nodiscard]] virtual bool reservedFlag() const;
    /// Whether the container has an identity of its own. @return false
    [[nodiscard]] virtual bool hasUuid() const;

    /// Makes the static attributes of a definition table, as copies of those of `source` with the same tokens
    /// if it has them.
    /// @param definitions a table that ends at the row with the NIL name and outlives the container. The
    /// tokens are places in the block, so those of a class follow those of its base
    /// @return false, with nothing made, if the table is null, a token is taken or beyond 65535, or a type
    /// has no attributes
    bool createAttributes(AttrDefinition const* definitions, CreateType type, AttrContainer const* source);

    /// Adds a custom attribute and takes it over. A value that was read for an attribute of this name and
    /// type before there was one is applied now.
    /// @param name any text; may be taken already, and the earlier attribute is then found first. NIL counts
    /// as the empty name
    /// @return false for null and for an attribute that a container has already
    bool addAttribute(Attribute* attribute, Bv_1_1::String const& name);

    /// Removes all custom attributes and forgets what was kept for others. @return true
    bool rmAllCustomAttributes();

    /// The number of static and custom attributes together.
    [[nodiscard]] unsigned int getNumAttributes() const noexcept;

    /// The number of places in the block of static attributes.
    [[nodiscard]] unsigned int getNumStaticAttributes() const noexcept;

    /// The attribute with this token, or null.
    [[nodiscard]] Attribute* getAttribute(unsigned int token) const noexcept;

protected:
    ~AttrContainer() override;

private:
    struct StaticAttribute
    {
        Bv_1_1::SmartPtr<Attribute> attribute; // null in a place that no definition names
        AttrDefinition const* definition = nullptr;
    };

    [[nodiscard]] bool canCreate(AttrDefinition const* definitions) const;
    void attach(Attribute& attribute, Bv_1_1::String const& name);
    void detach(Attribute& attribute) noexcept;
    void copyCustomAttributes(CreateType type, AttrContainer const& source);
    void applyKeptValue(Attribute& attribute);
    [[nodiscard]] Attribute*
    findToRead(bool isCustom, Bv_1_1::String const& name, Bv_1_1::String const& typeKey);

    std::vector<StaticAttribute> statics_;             // by token
    std::unique_ptr<detail::CustomAttributes> custom_; // null as long as there are none
    std::unique_ptr<detail::KeptValues> kept_;         // null as long as there are none
};

} // namespace oV

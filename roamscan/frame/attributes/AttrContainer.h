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

/// A named container of attributes. It has static attributes, which its class defines, and custom attributes,
/// which are added at run time under arbitrary names. It owns its attributes.
///
/// A token identifies an attribute. Tokens below the number of static attributes are indices of static
/// attributes; the tokens after them are those of the custom attributes, in the order in which they were
/// added. The static attribute with token 0 is the container's own name. All other attributes can be looked
/// up by name, custom attributes in constant time.
///
/// A container is created in two steps: the constructor, then init().
///
/// Thread safety: concurrent reads are safe; a write needs exclusive access.
///
/// **Model formats.** A container writes one statement for each attribute: the keyword `field` for a static
/// attribute or `attribute` for a custom one, its name, its type key, and a block that the attribute writes.
/// In the bare form, `false` replaces `field` and `true` replaces `attribute`. Statements for attributes that
/// the container does not have are kept. When an attribute of that name and type is added, addAttribute()
/// applies the kept value to it; until then, writeTo() writes the kept statement back.
///
/// The order of the virtual operations is part of the binary interface. Some of them are hooks of the host's
/// library that are not used here; their documentation says what they return.
class ROAMSCAN_EXPORT AttrContainer : public Observer, public AccessibleInterface, public ValidationInterface
{
public:
    /// The token that denotes no attribute.
    static constexpr unsigned int unknownToken = KeyTable::unknownToken;
    /// The token of the name.
    static constexpr unsigned int nameToken = 0;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The type of a type key, which is the name of an attribute's class record.
    /// @return AttrType::End if the key is unknown
    [[nodiscard]] static AttrType getTypeFromStringKey(Bv_1_1::String const& key);

    /// A container without attributes. Call init() with the same arguments afterwards.
    AttrContainer(CreateType type, AttrContainer const* source);
    AttrContainer(AttrContainer const&) = delete;
    AttrContainer& operator=(AttrContainer const&) = delete;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Copies the values of the attributes that both containers have under the same name, without
    /// notification.
    /// @return false if `source` is not a container
    bool copyFrom(Observer const* source) override;
    /// Also updates the observers of the attributes.
    void updateObservers(ObserverRelationTable const& table) override;
    /// The attribute of this name, or null.
    [[nodiscard]] Observer* inqObserver(Bv_1_1::String const& name) override;
    /// The value of the attribute with token 0; NIL before init().
    [[nodiscard]] Bv_1_1::String getName() const override;
    /// Reads the statements up to the end of the block or of the input. Does not notify. Attributes that are
    /// not in the input are unchanged.
    /// @return the combined StatusCode of all statements (StatusCode::keep). A status that is not tolerated
    ///     ends the read at once; the attributes before it have been read.
    int readFrom(std::istream* stream, ReadContextBase* context) override;
    /// Writes all attributes and all kept statements.
    /// @return 0; StatusCode::noContext if the context is null; StatusCode::writeFailed if the stream is not
    ///     good
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;

    /// Not used by this library. @return 0
    [[nodiscard]] virtual unsigned int reservedQuery1() const;
    /// Not used by this library. @return 0
    [[nodiscard]] virtual unsigned int reservedQuery2() const;
    /// A new container of the same class with copies of all attributes.
    /// @param type if it is NoSource, the new container only has the initial attributes of the class
    /// @return the new container, with a reference count of 0; null if the class cannot be created through
    ///     its class record
    [[nodiscard]] virtual AttrContainer* duplicate(CreateType type) const;
    /// The same as duplicate(), but a copied observer also observes the copy of its subject.
    [[nodiscard]] virtual AttrContainer* duplicateAll(CreateType type) const;
    /// A new child container for a field. Not used by this library: there are no child containers.
    /// @return null
    [[nodiscard]] virtual AttrContainer* checkCreateChildField(Bv_1_1::String const& name);
    /// The same for a field with a default. @return null
    [[nodiscard]] virtual AttrContainer* checkCreateDefaultChildField(Bv_1_1::String const& name);
    /// Creates the attributes of the class, as copies of those of `source`, and copies of the custom
    /// attributes of `source`.
    /// @param type if it is NoSource, `source` is ignored
    /// @param source may be null
    /// @return false if init() was called before; the container is then unchanged
    virtual bool init(CreateType type, AttrContainer const* source);
    /// Whether the other container has the same class and the same attributes (names, types and values) in
    /// the same order.
    [[nodiscard]] virtual bool isEqualTo(AttrContainer const& other) const;
    /// Calls the function for each child container. There are none, so it does nothing.
    virtual void fieldVisitor(std::function<void(AttrContainer&)> const& visit);
    /// Calls the function for this container, then for each child container.
    virtual void fieldAndStructureVisitor(std::function<void(AttrContainer&)> const& visit);
    /// Calls the function for this container, then for each attribute.
    virtual void observerVisitor(std::function<void(Observer&)> const& visit);
    /// Calls the function for each attribute, in the order of the tokens.
    virtual void attributeVisitor(std::function<void(Attribute&)> const& visit);
    /// Not used by this library. @return NIL
    [[nodiscard]] virtual Bv_1_1::String toJson() const;
    /// Not used by this library. @return false
    virtual bool prepareUpdateFromJson(Bv_1_1::String const& json);
    /// Not used by this library. @return false
    virtual bool updateAfterCreationFromJson(Bv_1_1::String const& json);
    /// Starts a read: discards the statements that an earlier read kept.
    virtual void initRead();
    /// Reads the current statement of the input, which is one attribute.
    /// @return a StatusCode
    virtual int readField(std::istream* stream, ReadContextBase* context);
    /// Writes one attribute. Writes nothing for a token without an attribute.
    /// @return a StatusCode
    virtual int writeField(unsigned int token, std::ostream* stream, WriteContextBase* context) const;
    /// The token for a keyword of the input: that of the static attribute of this name.
    [[nodiscard]] virtual unsigned int lookupToken(Bv_1_1::String const& keyword) const;
    /// The child container of this name. Not used by this library: there are no child containers.
    /// @return null
    [[nodiscard]] virtual AttrContainer* lookupField(Bv_1_1::String const& name) const;
    /// Converts a token of an older version of the class. The base class returns the same token.
    [[nodiscard]] virtual unsigned int convertToNewFieldToken(unsigned int token) const;
    /// The name to be shown to users. The base class returns the name.
    [[nodiscard]] virtual Bv_1_1::String getDisplayName() const;
    /// Sets the name to be shown to users. The base class sets the name.
    virtual bool setDisplayName(Bv_1_1::String const& name);
    /// Whether no sibling has this name. Not used by this library. @return true
    [[nodiscard]] virtual bool isNameUnique(Bv_1_1::String const& name) const;
    /// Whether this is a valid name for the container. Not used by this library. @return true
    [[nodiscard]] virtual bool checkName(Bv_1_1::String const& name) const;
    /// A name that no sibling has. The base class returns `proposed`.
    [[nodiscard]] virtual Bv_1_1::String generateUniqueName(Bv_1_1::String const& proposed) const;
    /// Sets the name.
    /// @param name the new name
    /// @param mode not used
    /// @return false before init(), or if an observer vetoed the change
    virtual bool setName(Bv_1_1::String const& name, int mode);
    /// The token of the first attribute of this name, or `unknownToken`. Static attributes come before custom
    /// ones. NIL counts as the empty name.
    /// @note Token 0, the container's own name, is not found by this lookup, so a custom attribute may have
    ///     the name "Name".
    [[nodiscard]] virtual unsigned int getAttrToken(Bv_1_1::String const& name) const;
    /// The name of an attribute; NIL for a token without an attribute.
    [[nodiscard]] virtual Bv_1_1::String getAttrName(unsigned int token) const;
    /// The definition of a static attribute; null for other tokens.
    [[nodiscard]] virtual AttrDefinition const* getAttrDefinition(unsigned int token) const;
    /// The tokens that are written, in order, as ranges from x to y, both included.
    [[nodiscard]] virtual std::vector<Bv_1_1::SVec2d<int>> getIOTokensList() const;
    /// The token of the static attribute that is written under this name, including token 0; or
    /// `unknownToken`.
    [[nodiscard]] virtual unsigned int getFieldToken(Bv_1_1::String const& name) const;
    /// The name under which a static attribute is written; NIL for other tokens.
    [[nodiscard]] virtual Bv_1_1::String getFieldName(unsigned int token) const;
    /// The prefix of field names in the host's registry. Not used by this library. @return NIL
    [[nodiscard]] virtual Bv_1_1::String getFieldRegistryPrefix() const;
    /// Not used by this library. Does nothing.
    virtual void reservedHook();
    /// Not used by this library. @return false
    [[nodiscard]] virtual bool reservedFlag() const;
    /// Whether the container has a UUID. Not used by this library. @return false
    [[nodiscard]] virtual bool hasUuid() const;

    /// Creates the static attributes of a definition table. Attributes that `source` has too, with the same
    /// token, are copied.
    /// @param definitions ends with a row whose name is NIL; must outlive the container. The tokens of a
    ///     derived class must follow those of its base class.
    /// @param type if it is NoSource, `source` is ignored
    /// @param source may be null
    /// @return false, and nothing is created, if the table is null, a token is already used or above 65535,
    ///     or a type is not supported
    bool createAttributes(AttrDefinition const* definitions, CreateType type, AttrContainer const* source);

    /// Adds a custom attribute, and takes ownership of it. If a value for an attribute of this name and type
    /// was read before, it is assigned now.
    /// @param attribute a new attribute, or one that is in no container
    /// @param name any text; NIL counts as the empty name. Several attributes of different types may have the
    ///     same name; a lookup by name finds the first one.
    /// @return false if `attribute` is null or already in a container, or if there is a custom attribute of
    ///     this name and type. In the last case `attribute` is destroyed if it has no other reference.
    bool addAttribute(Attribute* attribute, Bv_1_1::String const& name);

    /// Whether a value was read for a custom attribute of this name and type that does not exist yet.
    /// @param typeKey the name of the attribute's class record
    [[nodiscard]] bool isValueKept(Bv_1_1::String const& name, Bv_1_1::String const& typeKey) const;

    /// Removes all custom attributes and all kept statements. @return true
    bool rmAllCustomAttributes();

    /// The total number of static and custom attributes.
    [[nodiscard]] unsigned int getNumAttributes() const noexcept;

    /// The number of static attributes, including tokens that no definition uses.
    [[nodiscard]] unsigned int getNumStaticAttributes() const noexcept;

    /// The attribute with this token, or null.
    [[nodiscard]] Attribute* getAttribute(unsigned int token) const noexcept;

protected:
    ~AttrContainer() override;

private:
    struct StaticAttribute
    {
        Bv_1_1::SmartPtr<Attribute> attribute; // null for a token that no definition uses
        AttrDefinition const* definition = nullptr;
    };

    [[nodiscard]] ROAMSCAN_NO_EXPORT bool canCreate(AttrDefinition const* definitions) const;
    ROAMSCAN_NO_EXPORT void attach(Attribute& attribute, Bv_1_1::String const& name);
    ROAMSCAN_NO_EXPORT void detach(Attribute& attribute) noexcept;
    ROAMSCAN_NO_EXPORT void copyCustomAttributes(CreateType type, AttrContainer const& source);
    [[nodiscard]] ROAMSCAN_NO_EXPORT Attribute* findCustom(Bv_1_1::String const& name,
                                                           Bv_1_1::String const& typeKey) const;
    ROAMSCAN_NO_EXPORT void applyKeptValue(Attribute& attribute);
    [[nodiscard]] ROAMSCAN_NO_EXPORT Attribute*
    findToRead(bool isCustom, Bv_1_1::String const& name, Bv_1_1::String const& typeKey) const;

    std::vector<StaticAttribute> statics_;             // by token
    std::unique_ptr<detail::CustomAttributes> custom_; // null as long as there are none
    std::unique_ptr<detail::KeptValues> kept_;         // null as long as there are none
};

} // namespace oV

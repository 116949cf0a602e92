#pragma once

#include <roamscan/frame/attributes/ModifiedListener.h>
#include <roamscan/frame/formats/KeyTable.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <cstdint>

namespace oV
{

class AttrContainer;

namespace detail
{
class AttributeBlock;
}

/// The base of all attributes: a named, observable value, usually in a container.
///
/// A change notifies observers twice: before the change, when they can veto it (preTouch), and after it
/// (touch).
///
/// Thread safety: concurrent reads are safe; a write needs exclusive access. The order of the virtual
/// operations is part of the binary interface.
class ROAMSCAN_EXPORT Attribute : public Observer
{
public:
    /// Flag: modified listeners are not called for this attribute.
    static constexpr std::uint16_t silentFlag = 4;
    /// Flag: the value is only a default (weak value).
    static constexpr std::uint16_t weakValueFlag = 8;
    /// The token in keyTable() of the keyword of a value.
    static constexpr unsigned int valueToken = 3;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The keywords of attributes in model formats.
    [[nodiscard]] static KeyTable const& keyTable();

    /// Whether notification is switched off on this thread (BlockObserving).
    [[nodiscard]] static bool isObservingBlocked() noexcept;

    /// Whether CachedAttributeInfo records may hold pending values. Each thread has its own flag.
    [[nodiscard]] static bool isCachedAttributePending() noexcept;
    /// Sets this thread's flag; see isCachedAttributePending().
    static void setIsCachedAttributePending(bool pending) noexcept;

    /// Whether any modified listener exists in the process. Thread-safe.
    [[nodiscard]] static bool isAnyModifiedListenerExisting() noexcept;

    /// Adds a modified listener for the whole process, and takes a reference to it. Thread-safe.
    static void addModifiedListener(ModifiedListener* listener);

    /// Removes a modified listener. Thread-safe, but a call of the listener may still be running on another
    /// thread when this function returns.
    /// @return false if it was not added
    static bool removeModifiedListener(ModifiedListener const* listener);

    /// @name Memory
    /// An attribute that is constructed in given memory, such as a container's block, is destroyed but not
    /// freed. ThreadDataType::attributeInBlock passes this information between these operators and the
    /// object.
    /// @{
    [[nodiscard]] static void* operator new(std::size_t size);
    [[nodiscard]] static void* operator new(std::size_t size, void* place) noexcept;
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, void* place) noexcept;
    /// @}

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Copies the value of another attribute without notification, like assignAttr().
    /// @return false if `source` is not an attribute
    bool copyFrom(Observer const* source) override;
    /// This attribute if it has this name, otherwise null.
    [[nodiscard]] Observer* inqObserver(Bv_1_1::String const& name) override;
    /// The name under which a container holds or last held the attribute; NIL if none did.
    [[nodiscard]] Bv_1_1::String getName() const override;
    /// The container's path, "/" and the name; the name if it is in no container.
    [[nodiscard]] Bv_1_1::String inqDisplayPath() const override;
    /// The container's path, "/" and the name; the name if it is in no container.
    [[nodiscard]] Bv_1_1::String inqObjPath() const override;
    /// Whether the container is part of the host's tree of models. False without a container.
    [[nodiscard]] bool isPartOfMainTree() const override;
    /// Handles the current keyword of the input. The base class knows no keyword.
    /// @return StatusCode::unknownKeyword, or the status of an input that has failed
    int readFrom(std::istream* stream, ReadContextBase* context) override;
    /// Writes nothing. @return 0
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;
    /// The container that this attribute's container belongs to, or null.
    [[nodiscard]] AttrContainer* lookupObject() override;

    /// A new attribute with the same value type and value.
    /// @param type if it is NoSource, the new attribute has the initial value instead
    /// @param plain true creates a plain attribute (Attr), false a custom attribute (CustAttr)
    /// @return the new attribute, with a reference count of 0
    [[nodiscard]] virtual Attribute* duplicateAttr(CreateType type, bool plain) const = 0;

    /// Copies the value of another attribute, converted through text if it has another type. Does not notify.
    virtual void assignAttr(Attribute const& other) = 0;

    /// Whether the other attribute has the same type and an equal value.
    [[nodiscard]] virtual bool equalsAttr(Attribute const& other) const = 0;

    /// The negation of equalsAttr().
    [[nodiscard]] virtual bool differsAttr(Attribute const& other) const;

    /// Notifies the observers after a change, unless notification is blocked. Removes the notification
    /// records of the change, but not CachedAttributeInfo records.
    /// @param observer the object that made the change; may be null
    /// @param parameter not used here
    virtual void touch(Observer* observer, void* parameter);

    /// Parses a text into the value, with notification before and after. Observers cannot veto the change. If
    /// the text cannot be parsed, the value is unchanged.
    virtual void assignFromString(Bv_1_1::String const& text, Observer* observer, void* parameter) = 0;

    /// Sets `text` to the value as text.
    virtual void getValueString(Bv_1_1::String& text) const = 0;

    /// Reads one value from a stream in a model format. Does not notify. If the input has no value of this
    /// type, the attribute is unchanged and the input has failed (ModelInFormat::status).
    virtual void readValueFrom(std::istream* stream, ReadContextBase* context) = 0;

    /// The container of this attribute, or null.
    /// @param token not used by this class; 0xFFFFFFFF means any
    [[nodiscard]] virtual AttrContainer* getLocation(unsigned int token) const;

    /// Stores the container of this attribute. The base class does nothing and returns false.
    /// @return whether it was stored
    virtual bool setLocation(AttrContainer* container);

    /// Notifies the observers of the second list before a change, unless notification is blocked.
    /// @param observer the object that makes the change; may be null
    /// @param parameter not used
    void preTouch(Observer* observer, void* parameter);

    /// Calls the modified listeners. To be called before a different value is stored.
    void informModifiedListeners(Observer* observer, void* parameter);

    /// All flags.
    [[nodiscard]] std::uint16_t flags() const noexcept { return flags_; }
    /// Whether any of these flags is set.
    [[nodiscard]] bool hasFlag(std::uint16_t flag) const noexcept { return (flags_ & flag) != 0; }
    /// Sets or clears flags. The flag of isInBlock() cannot be changed.
    void setFlag(std::uint16_t flag, bool value) noexcept;

    /// Whether the attribute was constructed in given memory, such as a container's block.
    [[nodiscard]] bool isInBlock() const noexcept { return hasFlag(inBlockFlag); }

    Attribute(Attribute const&) = delete;
    Attribute& operator=(Attribute const&) = delete;

protected:
    /// @param type if it is NoSource, `source` is ignored
    /// @param source the flags are copied from it; may be null
    Attribute(CreateType type, Attribute const* source) noexcept;
    ~Attribute() override;

    /// Whether this thread is on the cached-value path (ThreadDataType::cachedPathCount).
    [[nodiscard]] static bool isOnCachedPath() noexcept;

private:
    friend class AttrContainer; // names attributes and gives them their place

    static constexpr std::uint16_t inBlockFlag = 0x8000;

    [[nodiscard]] ROAMSCAN_NO_EXPORT Bv_1_1::String pathBelow(Bv_1_1::String const& containerPath) const;

    std::uint16_t flags_ = 0;
    AttrContainer* container_ = nullptr;      // not owned
    detail::AttributeBlock* block_ = nullptr; // this attribute's memory is part of it
    Bv_1_1::String name_;
};

} // namespace oV

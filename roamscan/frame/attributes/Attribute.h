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
/// A change is announced to those who may refuse it (preTouch) and reported once it is made (touch). An
/// attribute is for many readers or one writer. The order of the virtual operations is part of the binary
/// interface.
class ROAMSCAN_EXPORT Attribute : public Observer
{
public:
    /// Bit of the flag word: modified listeners do not hear of this attribute.
    static constexpr std::uint16_t silentFlag = 4;
    /// Bit of the flag word: the value only states a default (the weak-value mark).
    static constexpr std::uint16_t weakValueFlag = 8;
    /// The token in keyTable() that is the keyword of a value.
    static constexpr unsigned int valueToken = 3;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The keywords of attributes in model formats.
    [[nodiscard]] static KeyTable const& keyTable();

    /// Whether notification is switched off on this thread (BlockObserving). Nothing is announced or reported
    /// then.
    [[nodiscard]] static bool isObservingBlocked() noexcept;

    /// Whether CachedAttributeInfo records may hold pending values; a flag of the thread.
    [[nodiscard]] static bool isCachedAttributePending() noexcept;
    /// Sets that flag.
    static void setIsCachedAttributePending(bool pending) noexcept;

    /// Whether any modified listener exists in the process. Safe on any thread.
    [[nodiscard]] static bool isAnyModifiedListenerExisting() noexcept;

    /// Adds a modified listener for the whole process, which takes a reference. Safe on any thread.
    static void addModifiedListener(ModifiedListener* listener);

    /// Removes a modified listener. A call of it that is under way on another thread is not waited for.
    /// @return false if it was not added
    static bool removeModifiedListener(ModifiedListener const* listener);

    /// @name Memory
    /// An attribute that is made at a given place, as in a container's block, is destroyed but not freed. The
    /// thread's data carries the mark from and to the object (ThreadDataType::attributeInBlock).
    /// @{
    [[nodiscard]] static void* operator new(std::size_t size);
    [[nodiscard]] static void* operator new(std::size_t size, void* place) noexcept;
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, void* place) noexcept;
    /// @}

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Takes over the value of another attribute, silently. @return false if `source` is no attribute
    bool copyFrom(Observer const* source) override;
    /// This attribute, if that is its name; else null.
    [[nodiscard]] Observer* inqObserver(Bv_1_1::String const& name) override;
    /// The name that a container has given it last; NIL before.
    [[nodiscard]] Bv_1_1::String getName() const override;
    /// The container's path, "/" and the name; the name if it is in no container.
    [[nodiscard]] Bv_1_1::String inqDisplayPath() const override;
    /// The container's path, "/" and the name; the name if it is in no container.
    [[nodiscard]] Bv_1_1::String inqObjPath() const override;
    /// Whether the container is.
    [[nodiscard]] bool isPartOfMainTree() const override;
    /// Handles the current keyword of the input, none of which the base knows.
    /// @return StatusCode::unknownKeyword, or the status of an input that has failed
    int readFrom(std::istream* stream, ReadContextBase* context) override;
    /// The base has nothing to write. @return 0
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;
    /// What the container belongs to, or null.
    [[nodiscard]] AttrContainer* lookupObject() override;

    /// A new attribute with the same value; with the type NoSource, one with the initial value.
    /// @param plain whether to make the plain class of the value's type rather than the one of custom
    /// attributes, whichever this attribute has
    /// @return without a reference
    [[nodiscard]] virtual Attribute* duplicateAttr(CreateType type, bool plain) const = 0;

    /// Takes over the value of another attribute, as text if it is of another type. Neither announces nor
    /// reports.
    virtual void assignAttr(Attribute const& other) = 0;

    /// Whether the other attribute has the same type and an equal value.
    [[nodiscard]] virtual bool equalsAttr(Attribute const& other) const = 0;

    /// The negation of equalsAttr().
    [[nodiscard]] virtual bool differsAttr(Attribute const& other) const;

    /// Reports a change to the observers and removes the records of its announcement. CachedAttributeInfo
    /// records stay. Nothing is reported while observing is blocked.
    /// @param observer who has made the change; may be null
    /// @param parameter not used here
    virtual void touch(Observer* observer, void* parameter);

    /// Announces, parses the text into the value, and reports. Nobody can refuse. Text that is not of the
    /// value's type leaves the value as it is.
    virtual void assignFromString(Bv_1_1::String const& text, Observer* observer, void* parameter) = 0;

    /// Sets `text` to the value as text.
    virtual void getValueString(Bv_1_1::String& text) const = 0;

    /// Reads one value from a model stream into this attribute, silently. If the input has no such value, the
    /// attribute keeps its own, and the input has the status.
    virtual void readValueFrom(std::istream* stream, ReadContextBase* context) = 0;

    /// The container of this attribute, or null.
    /// @param token not used here; 0xFFFFFFFF stands for any
    [[nodiscard]] virtual AttrContainer* getLocation(unsigned int token) const;

    /// Lets the attribute know its container. Here: does nothing. @return whether it took notice
    virtual bool setLocation(AttrContainer* container);

    /// Announces a change to the second list of observers, unless observing is blocked.
    /// @param observer who makes the change; may be null
    /// @param parameter not used
    void preTouch(Observer* observer, void* parameter);

    /// Tells the modified listeners that another value is about to be stored.
    void informModifiedListeners(Observer* observer, void* parameter);

    /// The flag word.
    [[nodiscard]] std::uint16_t flags() const noexcept { return flags_; }
    /// Whether any of these bits of the flag word is set.
    [[nodiscard]] bool hasFlag(std::uint16_t flag) const noexcept { return (flags_ & flag) != 0; }
    /// Sets or clears bits of the flag word; not the one of the memory that the attribute lives in.
    void setFlag(std::uint16_t flag, bool value) noexcept;

    /// Whether the attribute was made at a given place, such as in a container's block.
    [[nodiscard]] bool isInBlock() const noexcept { return hasFlag(inBlockFlag); }

    Attribute(Attribute const&) = delete;
    Attribute& operator=(Attribute const&) = delete;

protected:
    /// @param source where the flag word comes from, unless it is null or the type is NoSource
    Attribute(CreateType type, Attribute const* source) noexcept;
    ~Attribute() override;

    /// Whether this thread is on the cached-value path (ThreadDataType::cachedPathCount).
    [[nodiscard]] static bool isOnCachedPath() noexcept;

private:
    friend class AttrContainer; // names attributes and gives them their place

    static constexpr std::uint16_t inBlockFlag = 0x8000;

    [[nodiscard]] Bv_1_1::String pathBelow(Bv_1_1::String const& containerPath) const;

    std::uint16_t flags_ = 0;
    AttrContainer* container_ = nullptr;      // not owned
    detail::AttributeBlock* block_ = nullptr; // this attribute's memory is part of it
    Bv_1_1::String name_;
};

} // namespace oV

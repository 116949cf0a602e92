#pragma once

#include <roamscan/frame/attributes/AttrVal.h>
#include <roamscan/frame/attributes/AttrValueTypes.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/platform/Export.h>

#include <memory>

namespace oV
{

/// An attribute with a value of type `T`: `bool`, `int`, `double`, `Bv_1_1::String` or StringList.
///
/// While there is a pending value (CachedAttributeInfo), all operations that read the value return the
/// pending one. The order of the virtual operations is part of the binary interface.
template <typename T>
class ROAMSCAN_EXPORT_TEMPLATE Attr : public Attribute
{
public:
    /// The initial value is `false`, 0, 0.0, String::EMPTY, or an empty list.
    /// @param type if it is NoSource, `source` is ignored
    /// @param source the flags are copied from it, but not the value; may be null
    Attr(CreateType type, Attribute const* source);

    /// The class record, which CustAttr uses too.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Reads the statements of a block, from the current keyword to the end of the block, and passes the end
    /// of the block to the enclosing scope. Does not notify.
    /// @return the combined StatusCode of all statements (StatusCode::keep); a status that is not tolerated
    ///     ends the read at once
    /// @note A block without a value resets the attribute to its initial value.
    int readFrom(std::istream* stream, ReadContextBase* context) override;

    /// Writes the value; in the keyed form, with its keyword. If the context says so, the keyed form omits
    /// default values: `false`, 0, 0.0, the empty string, the empty list.
    /// @return 0; StatusCode::noContext if the context is null; StatusCode::writeFailed if the stream is not
    ///     good
    /// @warning NaN and -0.0 count as default values too. If they are omitted, they are read back as 0.0.
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;

    [[nodiscard]] Attribute* duplicateAttr(CreateType type, bool plain) const override;
    void assignAttr(Attribute const& other) override;
    [[nodiscard]] bool equalsAttr(Attribute const& other) const override;

    /// On the cached-value path, first assigns the pending value. Then notifies like Attribute::touch().
    void touch(Observer* observer, void* parameter) override;
    void assignFromString(Bv_1_1::String const& text, Observer* observer, void* parameter) override;
    void getValueString(Bv_1_1::String& text) const override;
    void readValueFrom(std::istream* stream, ReadContextBase* context) override;
    [[nodiscard]] AttrContainer* getLocation(unsigned int token) const override;
    bool setLocation(AttrContainer* container) override;

    /// Notifies the observers before the change, stores the value, and notifies them after the change.
    /// @param newValue the new value
    /// @param observer the object that makes the change; may be null
    /// @param parameter passed on to the modified listeners; may be null
    /// @return false if an observer vetoed the change; the value is then unchanged
    virtual bool assignFrom(T const& newValue, Observer* observer, void* parameter);

    /// Calls preTouch(), stores the value, and calls touch(). Observers cannot veto the change, and modified
    /// listeners are not called.
    /// @warning Despite its name it notifies the observers.
    virtual void assignSilently(T const& newValue, Observer* observer, void* parameter);

    /// The value; the pending value if there is one.
    [[nodiscard]] T getValue() const { return currentValue(); }

protected:
    ~Attr() override;

    /// Replaces the holder of the value, for derived classes with a derived holder. Does not notify.
    /// @param holder not null
    void setHolder(std::unique_ptr<AttrVal<T>> holder) noexcept;

private:
    [[nodiscard]] T const& currentValue() const;
    [[nodiscard]] ROAMSCAN_NO_EXPORT bool announce(T const& newValue, Observer* observer, void* parameter);
    ROAMSCAN_NO_EXPORT void dropCachedValue();

    std::unique_ptr<AttrVal<T>> value_; // never null
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE Attr<bool>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE Attr<int>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE Attr<double>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE Attr<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE Attr<StringList>;
#endif

} // namespace oV

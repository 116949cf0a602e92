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
/// Every operation that reads the value reads the pending one while there is one (CachedAttributeInfo).
/// The order of the virtual operations is part of the binary interface.
template <typename T>
class ROAMSCAN_EXPORT Attr : public Attribute
{
public:
    /// Starts with `false`, 0, 0.0, String::EMPTY, or no strings.
    /// @param source where the flag word comes from, unless it is null or the type is NoSource
    Attr(CreateType type, Attribute const* source);

    /// The record of this class, also for CustAttr.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Reads the statements of a block, from the current keyword to the end of the block, which it hands to
    /// the enclosing scope. Changes are silent.
    /// @note A block without a value resets the attribute to its initial value.
    /// @return the status to keep of all statements (StatusCode::keep); a status that is not tolerated ends
    /// the reading at once
    int readFrom(std::istream* stream, ReadContextBase* context) override;

    /// Writes the value, with its keyword in the keyed form. There a value that counts as default is left out
    /// if the context says so: `false`, 0, 0.0, the empty string, no strings.
    /// @note NaN and -0.0 count as default, too, so they are read back as 0.0 when defaults are left out.
    /// @return StatusCode::noContext for a null context, StatusCode::writeFailed if the stream's state is not
    /// clean
    int writeTo(std::ostream* stream, WriteContextBase* context) const override;

    [[nodiscard]] Attribute* duplicateAttr(CreateType type, bool plain) const override;
    void assignAttr(Attribute const& other) override;
    [[nodiscard]] bool equalsAttr(Attribute const& other) const override;

    /// Takes over a pending value on the cached-value path, then reports as Attribute::touch does.
    void touch(Observer* observer, void* parameter) override;
    void assignFromString(Bv_1_1::String const& text, Observer* observer, void* parameter) override;
    void getValueString(Bv_1_1::String& text) const override;
    void readValueFrom(std::istream* stream, ReadContextBase* context) override;
    [[nodiscard]] AttrContainer* getLocation(unsigned int token) const override;
    bool setLocation(AttrContainer* container) override;

    /// Announces the new value, stores it and reports the change.
    /// @param observer who makes the change; may be null
    /// @param parameter is handed to the modified listeners; may be null
    /// @return false if an observer has refused; the value stays then
    virtual bool assignFrom(T const& newValue, Observer* observer, void* parameter);

    /// Stores the value between preTouch() and touch(). Nobody can refuse, and modified listeners do not hear
    /// of it.
    virtual void assignSilently(T const& newValue, Observer* observer, void* parameter);

    /// The value, the pending one if there is one.
    [[nodiscard]] T getValue() const { return currentValue(); }

protected:
    ~Attr() override;

    /// Replaces the holder of the value, for classes whose holder knows more. Silent.
    /// @param holder not null
    void setHolder(std::unique_ptr<AttrVal<T>> holder) noexcept;

private:
    [[nodiscard]] T const& currentValue() const;
    [[nodiscard]] bool announce(T const& newValue, Observer* observer, void* parameter);
    void dropCachedValue();

    std::unique_ptr<AttrVal<T>> value_; // never null
};

extern template class ROAMSCAN_EXPORT Attr<bool>;
extern template class ROAMSCAN_EXPORT Attr<int>;
extern template class ROAMSCAN_EXPORT Attr<double>;
extern template class ROAMSCAN_EXPORT Attr<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT Attr<StringList>;

} // namespace oV

#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <exception>

namespace oV
{

/// The base of the library's failures: what went wrong and where it was noticed.
///
/// Copies share their texts and cannot fail. The texts never change, so any number of threads may read one
/// failure.
class ROAMSCAN_EXPORT ThrowableException : public std::exception
{
public:
    ThrowableException(ThrowableException const& other) noexcept;
    ThrowableException& operator=(ThrowableException const& other) noexcept;
    ~ThrowableException() override;

    /// The description, the function and the place in one line of narrow text, never null or empty. It is
    /// valid while this failure or a copy of it lives.
    [[nodiscard]] char const* what() const noexcept override;

    /// What went wrong, as given by whoever threw the failure.
    // NOLINTNEXTLINE(readability-const-return-type): part of the interface
    [[nodiscard]] Bv_1_1::String const getDesc() const;

    /// The qualified name of the function that threw the failure.
    [[nodiscard]] Bv_1_1::String getFunction() const;

    /// The source that the function stands in.
    [[nodiscard]] Bv_1_1::String getFile() const;

    /// The line in that source.
    [[nodiscard]] unsigned int getLine() const noexcept;

protected:
    /// What went wrong, in which function, of which source component, at which line.
    ThrowableException(Bv_1_1::String const& description,
                       Bv_1_1::String const& function,
                       Bv_1_1::String const& file,
                       unsigned int line);

    /// A failure with a title. `headline` takes the description's place in what().
    ThrowableException(Bv_1_1::String const& description,
                       Bv_1_1::String const& function,
                       Bv_1_1::String const& file,
                       unsigned int line,
                       Bv_1_1::String const& title,
                       Bv_1_1::String const& headline);

    /// The title; empty unless a derived class gives one.
    [[nodiscard]] Bv_1_1::String const& title() const noexcept { return title_; }

private:
    Bv_1_1::String description_;
    Bv_1_1::String function_;
    Bv_1_1::String file_;
    Bv_1_1::String title_;
    Bv_1_1::String summary_; // its narrow text is made at construction, so that what() cannot fail
    unsigned int line_;
};

} // namespace oV

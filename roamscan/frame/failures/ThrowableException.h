#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <exception>

namespace oV
{

/// The base of the library's failures: a description, and the source location that threw it.
///
/// Copies share their texts, and copying does not throw. The texts are immutable, so copies of a failure may
/// be used on different threads.
class ROAMSCAN_EXPORT ThrowableException : public std::exception
{
public:
    ThrowableException(ThrowableException const& other) noexcept;
    ThrowableException& operator=(ThrowableException const& other) noexcept;
    ~ThrowableException() override;

    /// Description, function and source location in one line of narrow text; never null or empty. Valid while
    /// this failure or a copy of it exists.
    [[nodiscard]] char const* what() const noexcept override;

    /// The description given at construction.
    // NOLINTNEXTLINE(readability-const-return-type): part of the interface
    [[nodiscard]] Bv_1_1::String const getDesc() const;

    /// The qualified name of the function that threw the failure.
    [[nodiscard]] Bv_1_1::String getFunction() const;

    /// The source of that function: a file name or a component name.
    [[nodiscard]] Bv_1_1::String getFile() const;

    /// The line in that source.
    [[nodiscard]] unsigned int getLine() const noexcept;

protected:
    /// A failure with a description and a source location.
    ThrowableException(Bv_1_1::String const& description,
                       Bv_1_1::String const& function,
                       Bv_1_1::String const& file,
                       unsigned int line);

    /// A failure with a title. In what(), `headline` replaces the description.
    ThrowableException(Bv_1_1::String const& description,
                       Bv_1_1::String const& function,
                       Bv_1_1::String const& file,
                       unsigned int line,
                       Bv_1_1::String const& title,
                       Bv_1_1::String const& headline);

    /// The title; empty unless a derived class sets it.
    [[nodiscard]] Bv_1_1::String const& title() const noexcept { return title_; }

private:
    Bv_1_1::String description_;
    Bv_1_1::String function_;
    Bv_1_1::String file_;
    Bv_1_1::String title_;
    Bv_1_1::String summary_; // converted to narrow text at construction, so that what() cannot throw
    unsigned int line_;
};

} // namespace oV

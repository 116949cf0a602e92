#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/VisibleException.h>

#include <cstdint>

namespace oV::Roamscan
{

/// A failure of file input or output. Its title is always "IOCode-Exception". The message says what went
/// wrong, and the code gives the kind of failure.
///
/// Only the library creates it. The class is not exported: plug-ins catch a VisibleException.
class IOCodeException : public VisibleException
{
public:
    IOCodeException(Bv_1_1::String const& function,
                    Bv_1_1::String const& file,
                    unsigned int line,
                    int ioCode,
                    Bv_1_1::String const& message);
    IOCodeException(IOCodeException const& other) noexcept;
    IOCodeException& operator=(IOCodeException const& other) noexcept;
    ~IOCodeException() override;

    /// The code given at construction; the same as getCode().
    [[nodiscard]] int getIOCode() const noexcept { return ioCode_; }

private:
    std::int32_t ioCode_;
};

} // namespace oV::Roamscan

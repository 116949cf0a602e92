#pragma once

#include <memory>

namespace oV::Roamscan::tool
{

/// While an object of this class exists, the standard streams carry bytes as they are, and a console shows
/// the UTF-8 text of std::cout and std::cerr. That is so on all systems but Windows, where the streams
/// translate the ends of lines, and a console takes text in a code page or in UTF-16.
class StandardStreams
{
public:
    StandardStreams();
    StandardStreams(StandardStreams const&) = delete;
    StandardStreams& operator=(StandardStreams const&) = delete;
    ~StandardStreams();

private:
    struct Redirected;
    std::unique_ptr<Redirected> out_; // nullptr unless the stream goes to a console of Windows
    std::unique_ptr<Redirected> err_;
};

} // namespace oV::Roamscan::tool

#pragma once

namespace oV::Roamscan::tool
{

/// While an object of this class exists, the standard streams carry bytes as they are, and a console shows
/// them as UTF-8. That is so on all systems but Windows, where the streams translate the ends of lines, and a
/// console has a code page, which is restored afterwards.
class StandardStreams
{
public:
    StandardStreams();
    StandardStreams(StandardStreams const&) = delete;
    StandardStreams& operator=(StandardStreams const&) = delete;
    ~StandardStreams();

private:
    unsigned int codePage_ = 0;
};

} // namespace oV::Roamscan::tool

/// @file
/// Reads any bytes as a text in a model format: in the bare form if the first byte is odd, otherwise in the
/// keyed form. Reading succeeds or returns a status that is not tolerated. The values that were read are
/// written, and are the same after a further round trip.

#include "StreamInput.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/frame/formats/WriteToScope.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using fuzz::require;
using oV::DataInFormat;
using oV::DataOutFormat;
using oV::KeptText;
using oV::ModelFormat;
using oV::ModelInFormat;
using oV::ModelOutFormat;
using oV::ReadContext;
using oV::ReadFromScope;
using oV::WriteContext;
using oV::WriteToScope;
namespace StatusCode = oV::StatusCode;

template <typename T>
void copyValueOf(ModelInFormat& in, ModelOutFormat& out)
{
    std::optional<T> const value = DataInFormat<T>(in).get();
    require(value.has_value() == (in.status() == StatusCode::ok), "a value or a failure");
    if (value) {
        DataOutFormat<T>(out).put(*value);
    }
}

/// Copies a value of the type with this number.
void copyValue(ModelInFormat& in, ModelOutFormat& out, std::size_t type)
{
    switch (type % 5) {
    case 0:
        return copyValueOf<bool>(in, out);
    case 1:
        return copyValueOf<int>(in, out);
    case 2:
        return copyValueOf<double>(in, out);
    case 3:
        return copyValueOf<String>(in, out);
    default:
        return copyValueOf<std::vector<String>>(in, out);
    }
}

void copyKept(ModelInFormat& in, ModelOutFormat& out)
{
    std::optional<KeptText> const kept = in.keepRest();
    require(kept.has_value() == (in.status() == StatusCode::ok), "kept or failed");
    if (kept) {
        using Format = ModelFormat::Format;
        std::string const bare = kept->inFormat(Format::Bare).text();
        std::string const back =
            kept->inFormat(Format::Bare).inFormat(Format::Keyed).inFormat(Format::Bare).text();
        require(back == bare || kept->format() == Format::Bare, "a value changes its form and back");
        out.putKept(*kept);
    }
}

/// Copies texts; one for each form.
class Copier
{
public:
    Copier(std::istream& from, std::ostream& to, ModelFormat::Format format)
        : from_(from), to_(to), readContext_(format), writeContext_(format)
    {}

    /// Copies the statements or items of a block, or of the whole text. Each block has its own scopes.
    int copy()
    {
        ReadFromScope const readScope(&from_, &readContext_);
        WriteToScope const writeScope(&to_, &writeContext_);
        ModelInFormat& in = readScope.getImf();
        if (in.format() == ModelFormat::Format::Bare) {
            copyItems(in, writeScope.getMof());
        } else {
            copyStatements(in, writeScope.getMof());
        }
        if (in.getKeyword() == ModelInFormat::endOfBlock()) {
            in.setPropagateKeyword(in.getKeyword());
        }
        return in.status();
    }

private:
    void copyBlock(ModelInFormat& in, ModelOutFormat& out)
    {
        if (in.startBlock()) {
            out.startBlock();
            copy();
            require(in.status() != StatusCode::ok || in.getKeyword() == ModelInFormat::endOfBlock(),
                    "a block has an end");
            in.nextKeyword();
            out.endBlock();
        }
    }

    void copyStatements(ModelInFormat& in, ModelOutFormat& out)
    {
        for (;;) {
            String const keyword = in.getKeyword();
            if (keyword.text().empty() || keyword == ModelInFormat::endOfBlock()) {
                return;
            }
            out.startValue(keyword);
            std::size_t const choice = keyword.text().front() % 8U;
            while (choice < 5 && in.hasValue() && in.status() == StatusCode::ok) {
                copyValue(in, out, choice);
            }
            if (choice == 5) {
                copyKept(in, out);
            } else if (in.hasBlock()) {
                copyBlock(in, out);
            } else {
                out.endValue();
            }
            in.nextKeyword();
        }
    }

    void copyItems(ModelInFormat& in, ModelOutFormat& out)
    {
        while (in.hasValue() || in.hasBlock()) {
            if (++items_ % 7 == 6) {
                copyKept(in, out);
            } else if (in.hasBlock()) {
                copyBlock(in, out);
            } else {
                copyValue(in, out, items_);
            }
        }
        if (in.getKeyword() != ModelInFormat::endOfBlock()) {
            in.nextKeyword(); // fails, because the rest is not an item
        }
    }

    std::istream& from_;
    std::ostream& to_;
    ReadContext readContext_;
    WriteContext writeContext_;
    std::size_t items_ = 0;
};

struct Copy
{
    int status;
    std::string text;
};

Copy copyOf(std::string const& text, ModelFormat::Format format)
{
    std::istringstream from(text);
    std::ostringstream to;
    int const status = Copier(from, to, format).copy();
    return {status, to.str()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    auto const format = data[0] % 2 == 0 ? ModelFormat::Format::Keyed : ModelFormat::Format::Bare;
    Copy const first = copyOf(std::string(data + 1, data + size), format);
    if (first.status != StatusCode::ok) {
        require(!StatusCode::isTolerated(first.status), "no reader tolerates a damaged text");
        return 0;
    }
    Copy const second = copyOf(first.text, format);
    require(second.status == StatusCode::ok, "what was written is read");
    require(second.text == first.text, "what was written comes back as it was");
    return 0;
}

#include <roamscan/frame/formats/FormatScope.h>
#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/ModelOutFormat.h>
#include <roamscan/frame/formats/ReadContextBase.h>
#include <roamscan/frame/formats/WriteContextBase.h>

namespace oV
{

// The open scopes of the thread are a list linked by their `enclosing_`, newest first.
template <typename Stream, typename Context, typename Format>
FormatScope<Stream, Context, Format>*& FormatScope<Stream, Context, Format>::newest() noexcept
{
    static constinit thread_local FormatScope* scope = nullptr;
    return scope;
}

template <typename Stream, typename Context, typename Format>
FormatScope<Stream, Context, Format> const*
FormatScope<Stream, Context, Format>::newestOn(Stream const* stream) noexcept
{
    FormatScope const* scope = stream == nullptr ? nullptr : newest();
    while (scope != nullptr && scope->stream_ != stream) {
        scope = scope->enclosing_;
    }
    return scope;
}

template <typename Stream, typename Context, typename Format>
FormatScope<Stream, Context, Format>::FormatScope(Stream* stream, Context* context)
    : stream_(stream), context_(context), enclosing_(newest())
{
    if (FormatScope const* const outer = newestOn(stream)) {
        format_ = outer->format_;
        isNested_ = true;
    } else {
        auto const form = context == nullptr ? ModelFormat::Format::Keyed : context->getFormat();
        format_ = std::make_shared<Format>(stream, form);
    }
    newest() = this;
}

template <typename Stream, typename Context, typename Format>
FormatScope<Stream, Context, Format>::~FormatScope()
{
    FormatScope** link = &newest();
    while (*link != this) {
        link = &(*link)->enclosing_;
    }
    *link = enclosing_;
}

template class FormatScope<std::istream, ReadContextBase, ModelInFormat>;
template class FormatScope<std::ostream, WriteContextBase, ModelOutFormat>;

} // namespace oV

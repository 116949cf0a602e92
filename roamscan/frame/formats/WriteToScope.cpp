#include <roamscan/frame/formats/WriteToScope.h>
#include <roamscan/frame/formats/detail/OpenScopes.h>

namespace oV
{

namespace
{

using Open = detail::OpenScopes<WriteToScope>;

} // namespace

WriteToScope::WriteToScope(std::ostream* stream, WriteContextBase* context)
    : stream_(stream), context_(context)
{
    if (WriteToScope const* const outer = Open::find(stream); stream != nullptr && outer != nullptr) {
        output_ = outer->output_;
    } else {
        auto const format = context == nullptr ? ModelFormat::Format::Keyed : context->getFormat();
        output_ = std::make_shared<ModelOutFormat>(stream, format);
    }
    Open::add(*this);
}

WriteToScope::~WriteToScope()
{
    Open::remove(*this);
}

} // namespace oV

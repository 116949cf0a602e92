#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/detail/OpenScopes.h>

namespace oV
{

namespace
{

using Open = detail::OpenScopes<ReadFromScope>;

} // namespace

ReadFromScope::ReadFromScope(std::istream* stream, ReadContextBase* context)
    : stream_(stream), context_(context)
{
    if (ReadFromScope const* const outer = Open::find(stream); stream != nullptr && outer != nullptr) {
        input_ = outer->input_;
        outerState_ = input_->openScope();
        isNested_ = true;
    } else {
        auto const format = context == nullptr ? ModelFormat::Format::Keyed : context->getFormat();
        input_ = std::make_shared<ModelInFormat>(stream, format);
    }
    Open::add(*this);
}

ReadFromScope::~ReadFromScope()
{
    Open::remove(*this);
    if (isNested_) {
        input_->closeScope(outerState_);
    }
}

} // namespace oV

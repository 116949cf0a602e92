#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/log/Models.h>

#include <utility>

namespace oV
{

namespace
{

class ModelsRecord : public Bv_1_1::oVClass
{
public:
    ModelsRecord()
        : oVClass(L"Models", Bv_1_1::BaseNode::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0})
    {}

    [[nodiscard]] Bv_1_1::BaseNode* create() const override { return new Models(); }
};

} // namespace

constinit std::atomic<Models*> Models::list = nullptr;

Models& Models::the()
{
    if (Models* const known = list.load(std::memory_order_acquire)) {
        return *known;
    }
    Bv_1_1::SmartPtr<Models> const made(new Models());
    made->init(CreateType::Fresh, nullptr);
    Models* expected = nullptr;
    if (!list.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel)) {
        return *expected; // another thread stored its list first; this one is destroyed
    }
    made->addReference(); // the reference that `list` owns
    return *made;
}

Bv_1_1::oVClass const* Models::Class()
{
    static ModelsRecord record;
    return &record;
}

Models::Models() = default;
Models::~Models() = default;

Bv_1_1::oVClass const* Models::getClassType() const
{
    return Class();
}

bool Models::init(CreateType type, Models const* source)
{
    bool const useSource = source != nullptr && type != CreateType::NoSource;
    std::vector<LogMessage> const messages = useSource ? source->logMessages() : std::vector<LogMessage>();
    std::lock_guard const guard(lock_);
    log_.assign(messages.begin(), messages.end());
    return true;
}

void Models::appendLogMsgExt(
    Bv_1_1::String const& message, int severity, char const* file, int line, char const* function)
{
    LogMessage const entry{
        message, severity, Bv_1_1::String::fromNarrow(file), line, Bv_1_1::String::fromNarrow(function)};
    std::shared_ptr<LogSink const> sink;
    {
        std::lock_guard const guard(lock_);
        log_.push_back(entry);
        if (log_.size() > logCapacity) {
            log_.pop_front();
        }
        sink = sink_;
    }
    if (sink) {
        (*sink)(entry);
    }
}

void Models::setLogSink(LogSink sink)
{
    auto next = sink ? std::make_shared<LogSink const>(std::move(sink)) : nullptr;
    std::lock_guard const guard(lock_);
    std::swap(sink_, next);
}

std::vector<LogMessage> Models::logMessages() const
{
    std::lock_guard const guard(lock_);
    return {log_.begin(), log_.end()};
}

void Models::clearLog()
{
    std::lock_guard const guard(lock_);
    log_.clear();
}

} // namespace oV

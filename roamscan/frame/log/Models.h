#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/log/LogMessage.h>
#include <roamscan/frame/platform/Export.h>

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace oV
{

/// The global list of models, and the one log. The log keeps its newest messages and hands each one to a sink
/// that the host may install; nothing is printed by itself.
///
/// All operations may be called on any thread.
class ROAMSCAN_EXPORT Models : public Bv_1_1::BaseNode
{
public:
    /// Takes each message as it comes in, on the thread that logs it.
    using LogSink = std::function<void(LogMessage const&)>;

    /// How many messages the log keeps; beyond that the oldest one goes.
    static constexpr std::size_t logCapacity = 10000;

    /// The global list, null until it is first asked for. It owns one reference to what it points to.
    static std::atomic<Models*> list;

    /// The global list, which is made if there is none. It takes no lock; of several threads that come first
    /// at once, one makes the list that all get.
    [[nodiscard]] static Models& the();

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// A list with an empty log and no sink.
    Models();
    Models(Models const&) = delete;
    Models& operator=(Models const&) = delete;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Sets up a list that was just made: with the messages of `source`, or empty if there is none or the
    /// type is NoSource. True if it is ready.
    virtual bool init(CreateType type, Models const* source);

    /// Adds a message to the log and hands it to the sink, on this thread and without a lock held, so a sink
    /// may use the log itself. What the sink throws passes through; the message is kept all the same. A
    /// message that is NIL stays NIL; a null file or function becomes NIL.
    void appendLogMsgExt(
        Bv_1_1::String const& message, int severity, char const* file, int line, char const* function);

    /// Takes the place of the sink; an empty function removes it. A call of the former sink that is under way
    /// on another thread is not waited for. Threads may call a sink at the same time.
    void setLogSink(LogSink sink);

    /// The messages kept at this moment, the oldest first.
    [[nodiscard]] std::vector<LogMessage> logMessages() const;

    /// Forgets the messages. The sink stays.
    void clearLog();

protected:
    ~Models() override;

private:
    mutable std::mutex lock_;
    std::deque<LogMessage> log_;          // guarded by lock_
    std::shared_ptr<LogSink const> sink_; // guarded by lock_, called without it
};

} // namespace oV

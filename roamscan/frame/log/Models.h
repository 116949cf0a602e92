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

/// The host's global list of models. In this library it only holds the log. The log keeps the newest messages
/// and passes each message to a sink that the host may install. Nothing is printed.
///
/// All functions are thread-safe.
class ROAMSCAN_EXPORT Models : public Bv_1_1::BaseNode
{
public:
    /// Receives each message on the thread that logs it.
    using LogSink = std::function<void(LogMessage const&)>;

    /// The largest number of messages in the log. A further message removes the oldest one.
    static constexpr std::size_t logCapacity = 10000;

    /// The global list; null until the first call of the(). The pointer owns one reference. Call the()
    /// instead of reading it.
    static std::atomic<Models*> list;

    /// The global list, created at the first call. Lock-free: if several threads make the first call
    /// concurrently, all get the same list.
    [[nodiscard]] static Models& the();

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// A list with an empty log and no sink.
    Models();
    Models(Models const&) = delete;
    Models& operator=(Models const&) = delete;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Initializes a new list with the messages of `source`.
    /// @param type the list stays empty if it is NoSource
    /// @param source the list to copy from; if null, the new list stays empty
    /// @return whether the list is ready for use
    virtual bool init(CreateType type, Models const* source);

    /// Adds a message to the log, then calls the sink on this thread. No lock is held during the call, so the
    /// sink may use the log.
    /// @param message the text; NIL stays NIL
    /// @param severity 1 for a caught failure, 3 for unexpected content in input
    /// @param file the source that logs the message; null becomes NIL
    /// @param line the line in that source
    /// @param function the qualified name of the function; null becomes NIL
    ///
    /// Exceptions of the sink pass through; the message is in the log then.
    void appendLogMsgExt(
        Bv_1_1::String const& message, int severity, char const* file, int line, char const* function);

    /// Replaces the sink. An empty function removes it.
    /// @warning Several threads may call a sink concurrently. A call of the previous sink may still be
    ///     running on another thread when this function returns.
    void setLogSink(LogSink sink);

    /// A copy of the messages in the log, oldest first.
    [[nodiscard]] std::vector<LogMessage> logMessages() const;

    /// Removes all messages. The sink stays installed.
    void clearLog();

protected:
    ~Models() override;

private:
    mutable std::mutex lock_;
    std::deque<LogMessage> log_;          // guarded by lock_
    std::shared_ptr<LogSink const> sink_; // guarded by lock_, called without it
};

} // namespace oV

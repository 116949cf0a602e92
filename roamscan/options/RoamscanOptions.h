#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <memory>

namespace oV::Roamscan
{

class RoamscanOptionsHost;

namespace detail
{
class LiveOptions;
} // namespace detail

/// The singleton of the options of the process: the live container, and the lock that guards it.
///
/// The host creates the singleton by RoamscanOptionsHost::setup(). Plug-ins read and write options with
/// getOption() and setOption(). Before the singleton exists, these return the caller's fallback. To use the
/// container itself, hold the lock:
/// @code
/// auto const access = RoamscanOptions::getLock();
/// if (auto const options = RoamscanOptions::getOpts()) {
///     options->updateToCurrentOptions();
/// }
/// @endcode
///
/// Thread safety: all static operations are thread-safe. The lock is recursive, so an observer that is
/// notified of a change may read and write options on the same thread. Lock order: this lock before the lock
/// of the container's lists.
class ROAMSCAN_EXPORT RoamscanOptions : public Bv_1_1::BaseNode
{
public:
    /// Shares the container of `other`.
    /// @note Moving copies: `other` keeps its container.
    RoamscanOptions(RoamscanOptions const& other) noexcept;
    /// @overload
    RoamscanOptions(RoamscanOptions&& other) noexcept; // NOLINT(performance-move-constructor-init)
    RoamscanOptions& operator=(RoamscanOptions const&) = delete;
    RoamscanOptions& operator=(RoamscanOptions&&) = delete;
    ~RoamscanOptions() override;

    /// The record of this class. Its create() returns null.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Blocks until this thread holds the lock. The result holds it until it is destroyed.
    /// @return a scope guard; null, without the lock, if it cannot be allocated
    [[nodiscard]] static std::unique_ptr<Bv_1_1::CriticalSection::Access> getLock();

    /// The container, for a thread that holds the lock. Never blocks.
    /// @return null if the calling thread does not hold the lock by getLock(), or if there is no singleton
    [[nodiscard]] static Bv_1_1::SmartPtr<RoamscanOptionsCont> getOpts();

    /// Removes all options, then creates the library's two options with their defaults:
    /// "Calculate3DTrajectory" (true) and "ShowDebug2DWindow" (false). Does nothing if there is no singleton.
    /// @note The container's lists of names and types are empty afterwards. Call
    ///     RoamscanOptionsCont::updateToCurrentOptions() to add the two options.
    static void cleanUp();

    /// Does nothing; the class has no statics to set up.
    static void initStatics();
    /// Does nothing.
    static void clearStatics();

private:
    class ClassCreator;
    friend class RoamscanOptionsHost;
    friend class detail::LiveOptions;

    /// Takes a reference to the container. Does not set the singleton.
    /// @throws oV::InternalErrorException if there is a singleton
    explicit RoamscanOptions(RoamscanOptionsCont* options);

    /// Creates the singleton.
    /// @throws oV::InternalErrorException if there is one already, which is then unchanged
    static void setup(RoamscanOptionsCont* options);

    /// The singleton, or null.
    [[nodiscard]] static Bv_1_1::SmartPtr<RoamscanOptions> the();

    /// Whether the singleton exists.
    [[nodiscard]] static bool available();

    void setDefaultOptions();

    static Bv_1_1::SmartPtr<RoamscanOptions> instance;
    static Bv_1_1::CriticalSection lock;

    Bv_1_1::SmartPtr<RoamscanOptionsCont> m_opts;
};

} // namespace oV::Roamscan

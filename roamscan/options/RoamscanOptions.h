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

/// The one process-wide entry to the options: the live container and the lock that guards every access to it.
///
/// The singleton is absent until the host brings it up (RoamscanOptionsHost). Plug-ins read and write single
/// options with getOption() and setOption(), which work before that, too: they then give the caller's
/// fallback. For work on the container itself, hold the lock:
/// @code
/// auto const access = RoamscanOptions::getLock();
/// if (auto const options = RoamscanOptions::getOpts()) {
///     options->updateToCurrentOptions();
/// }
/// @endcode
///
/// All static operations may be called on any thread. The lock is recursive, so an observer that runs during
/// a change may read and write options on the same thread. Lock order: this lock first, then the container's
/// own.
class ROAMSCAN_EXPORT RoamscanOptions : public Bv_1_1::BaseNode
{
public:
    /// Shares the container of `other`.
    /// @note A move does the same: the source keeps its container.
    RoamscanOptions(RoamscanOptions const& other) noexcept;
    /// @overload
    RoamscanOptions(RoamscanOptions&& other) noexcept; // NOLINT(performance-move-constructor-init)
    RoamscanOptions& operator=(RoamscanOptions const&) = delete;
    RoamscanOptions& operator=(RoamscanOptions&&) = delete;
    ~RoamscanOptions() override;

    /// The record of this class. Its create() makes no instance and returns null.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Waits for the lock and holds it for the life of the result.
    /// @return the guard; null, with the lock not taken, if there is no memory for it
    [[nodiscard]] static std::unique_ptr<Bv_1_1::CriticalSection::Access> getLock();

    /// The container, for a thread that holds the lock by getLock().
    /// @return null if the calling thread does not hold the lock, or if there is no singleton. Never waits.
    [[nodiscard]] static Bv_1_1::SmartPtr<RoamscanOptionsCont> getOpts();

    /// Removes all options and creates the two of the library, "Calculate3DTrajectory" (true) and
    /// "ShowDebug2DWindow" (false), anew. Does nothing while there is no singleton.
    /// @note The container's two lists of names and types are empty afterwards: they do not name the two
    /// options until RoamscanOptionsCont::updateToCurrentOptions() is called.
    static void cleanUp();

    /// Does nothing; the class has no statics to set up.
    static void initStatics();
    /// Does nothing.
    static void clearStatics();

private:
    class ClassCreator;
    friend class RoamscanOptionsHost;
    friend class detail::LiveOptions;

    /// Takes a reference on the container. Does not become the singleton by itself.
    /// @throws oV::InternalErrorException if there is a singleton
    explicit RoamscanOptions(RoamscanOptionsCont* options);

    /// Makes the singleton. A failure leaves the one that exists in place.
    /// @throws oV::InternalErrorException if there is one
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

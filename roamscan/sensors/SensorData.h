#pragma once

#include <roamscan/frame/mapping/AbsolutePose2DData.h>
#include <roamscan/frame/mapping/ImuData.h>
#include <roamscan/frame/mapping/RangefinderData.h>
#include <roamscan/frame/mapping/Rigid3.h>
#include <roamscan/frame/mapping/ScanningStatusData.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

namespace oV::Roamscan
{

/// The samples of one sensor by integer time (ticks of 10 ns). Records are immutable and may be shared with
/// other stores. By convention the key is `convertToIntegerTime` of the record's own time stamp.
template <typename T>
using SampleMap = std::map<int64, std::shared_ptr<T const>>;

/// The sensor samples of one recording, by sensor name and time, and the fixed pose of each sensor.
///
/// Plug-ins work on the fields directly. A sensor's name is an arbitrary byte string, and several fields may
/// use the same name.
///
/// Copies have their own containers and share the records. No operation changes a record. To change a sample,
/// an operation replaces the record by a new one; copies and views made before keep the old one.
///
/// Thread safety: concurrent reads are safe; a write needs exclusive access. Different stores are
/// independent, even if they share records.
///
/// **Stream format.** A length-prefixed buffer: its size as an unsigned 64-bit little-endian number, then one
/// FlatBuffers buffer of the schema in SensorFile.fbs. It stores `imuData`, `rangefinderData`, `sensorPoses`
/// and `posesApplied`, with times in double precision and all other numbers in single precision. It does not
/// store the other fields, the auxiliaries of points, and sensors without samples. Open streams in binary
/// mode.
struct ROAMSCAN_EXPORT SensorData
{
    /// The samples of one kind, by sensor name.
    template <typename T>
    using Samples = std::unordered_map<std::string, SampleMap<T>>;

    /// All samples of all sensors at one tick of integer time, by sensor name.
    struct TimedData
    {
        /// The samples of one kind. Contains only the sensors that have a sample at the tick.
        template <typename T>
        using Samples = std::map<std::string, std::shared_ptr<T const>>;

        Samples<mapping::ImuData> imuData;                       ///< From SensorData::imuData.
        Samples<mapping::AbsolutePose2DData> absolutePoseData;   ///< From SensorData::absolutePoseData.
        Samples<mapping::RangefinderData> rangefinderData;       ///< From SensorData::rangefinderData.
        Samples<mapping::RangefinderData> secondRangefinderData; ///< From SensorData::secondRangefinderData.
        Samples<mapping::ScanningStatusData> scanningStatusData; ///< From SensorData::scanningStatusData.
    };

    Samples<mapping::ImuData> imuData;                     ///< Stored in streams.
    Samples<mapping::AbsolutePose2DData> absolutePoseData; ///< Not stored in streams.
    Samples<mapping::RangefinderData> rangefinderData;     ///< Stored in streams.
    Samples<mapping::RangefinderData>
        secondRangefinderData; ///< A second, separate set. Not stored in streams.
    Samples<mapping::ScanningStatusData> scanningStatusData; ///< Not stored in streams.
    std::unordered_map<std::string, mapping::Rigid3<float>>
        sensorPoses;           ///< By sensor name. Stored in streams.
    bool posesApplied = false; ///< Whether `sensorPoses` have been applied. Stored in streams.

    SensorData();
    SensorData(SensorData const& other);
    ~SensorData();
    SensorData& operator=(SensorData const& other);

    /// Adds the samples and poses of another store; the records are shared. Where both stores have a sample
    /// of a sensor at the same tick, or a pose of the same sensor, this store's is kept.
    ///
    /// Takes constant time for each sample that is later than all samples of the sensor in this store.
    /// @throws oV::InternalErrorException if the stores differ in `posesApplied`; this store is then
    ///         unchanged
    SensorData& operator+=(SensorData const& other);

    /// Rotates the samples of each sensor by its pose in `sensorPoses`, and sets `posesApplied`. Does nothing
    /// if `posesApplied` is already set. Runs in parallel on TBB's threads, one task for each pose.
    ///
    /// The name of each pose is looked up in `imuData`, then in `rangefinderData`, then in
    /// `secondRangefinderData`. Only the first match is rotated.
    ///
    /// Exceptions of a task, such as std::bad_alloc, pass through. `posesApplied` then stays false, but some
    /// sensors may have been rotated.
    /// @warning Magnetic fields and auxiliaries are dropped, translations are not applied, and the origins of
    /// bursts are not rotated. A quaternion that is not of unit length is normalised for inertial samples,
    /// but used unchanged for points.
    void applyPoses();

    /// A view of all samples in the order of time, for a replay of the recording. Made by a k-way merge.
    /// @return never null; shares the records and is otherwise independent of this store
    [[nodiscard]] std::shared_ptr<std::map<int64, TimedData>> createTimedData() const;

    /// Maps the time of every sample by a function, for example to shift the recording. The key of a sample
    /// becomes `f(key)`; its time stamp is converted to ticks, mapped by `f` and converted back. The times of
    /// points within a burst do not change.
    ///
    /// Of several samples of a sensor that are mapped to the same tick, the one with the latest former key is
    /// kept. Sensors without samples are removed.
    ///
    /// Exceptions of `f` pass through. Samples of the kinds handled before are then mapped, the others
    /// unchanged; the order is inertial, rangefinder, second rangefinder, absolute pose, scanning status.
    /// @param f maps ticks to ticks; must be a pure function, because it is called twice for each sample
    /// @throws std::bad_function_call if `f` is empty and there is a sample
    void modifyTime(std::function<int64(int64)> const& f);

    /// Reads a length-prefixed buffer and leaves the stream directly after it.
    ///
    /// Of several samples of a sensor at the same tick, and of several poses of the same sensor, the last one
    /// in the stream is used.
    ///
    /// @return a new store, or null if
    /// - the stream is not good on entry or ends early,
    /// - the buffer is not valid for the schema,
    /// - it has more than 1,000,000 tables (the root, each sensor, each sample and each pose is a table),
    /// - a sample lacks a required vector, or a pose table its pose, or
    /// - the contents would take more than 256 MiB and more than sixteen times the buffer's size, which is
    ///   only possible if tables or vectors are referenced several times.
    /// @throws std::bad_alloc, std::length_error if the buffer cannot be allocated; the stream is then
    ///         directly after the length
    /// @throws std::ios_base::failure if exceptions are enabled on the stream
    /// @note A length beyond the end of the stream costs address space, not memory. Records are allocated in
    /// blocks of up to 64; a block lives as long as one of its records.
    [[nodiscard]] static std::shared_ptr<SensorData> read(std::istream& stream);

    /// Writes a length-prefixed buffer at the stream's position. Does not flush.
    /// @return whether everything was written and the stream is good. Nothing is written to a stream that is
    ///         not good, nor if the buffer would exceed the format's limit of 2 GiB.
    /// @warning Stores of more than 1,000,000 tables can be written but not read back; see read().
    [[nodiscard]] bool write(std::ostream& stream) const;
};

} // namespace oV::Roamscan

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

/// The samples of one sensor by integer time: immutable records, shared with whoever else holds them. By
/// convention the key is `convertToIntegerTime` of the record's own time stamp.
template <typename T>
using SampleMap = std::map<int64, std::shared_ptr<T const>>;

/// What the sensors recorded during one walk: samples by sensor name and time, and one fixed pose for each
/// sensor.
///
/// A plain store; plug-ins work on its fields. A sensor's name is an arbitrary byte string, and the same name
/// may stand in several fields. Copies have containers of their own and share the records. No operation
/// changes a record: where a sample differs afterwards, a new record has taken its place, and copies and
/// views made before keep the old one.
///
/// One writer at a time, with no reader beside it; many readers otherwise. Stores that share records are
/// independent.
///
/// **Stream format.** An unsigned 64-bit little-endian byte count, then as many bytes: one FlatBuffers buffer
/// of the schema in SensorFile.fbs. It holds `imuData`, `rangefinderData`, `sensorPoses` and `posesApplied`,
/// in single precision but for the times; the other fields are not kept, nor the auxiliaries of points, nor a
/// sensor without samples. The stream must pass bytes through unchanged (binary mode).
struct ROAMSCAN_EXPORT SensorData
{
    /// The samples of one kind, by sensor name.
    template <typename T>
    using Samples = std::unordered_map<std::string, SampleMap<T>>;

    /// All samples of all sensors at one tick, by sensor name.
    struct TimedData
    {
        /// The samples of one kind; only sensors that have one at the tick.
        template <typename T>
        using Samples = std::map<std::string, std::shared_ptr<T const>>;

        Samples<mapping::ImuData> imuData;                     ///< Out of SensorData::imuData.
        Samples<mapping::AbsolutePose2DData> absolutePoseData; ///< Out of SensorData::absolutePoseData.
        Samples<mapping::RangefinderData> rangefinderData;     ///< Out of SensorData::rangefinderData.
        Samples<mapping::RangefinderData>
            secondRangefinderData; ///< Out of SensorData::secondRangefinderData.
        Samples<mapping::ScanningStatusData> scanningStatusData; ///< Out of SensorData::scanningStatusData.
    };

    Samples<mapping::ImuData> imuData;                     ///< Kept in the stream.
    Samples<mapping::AbsolutePose2DData> absolutePoseData; ///< Not kept in the stream.
    Samples<mapping::RangefinderData> rangefinderData;     ///< Kept in the stream.
    Samples<mapping::RangefinderData>
        secondRangefinderData; ///< A second, separate set; not kept in the stream.
    Samples<mapping::ScanningStatusData> scanningStatusData;             ///< Not kept in the stream.
    std::unordered_map<std::string, mapping::Rigid3<float>> sensorPoses; ///< Kept in the stream.
    bool posesApplied = false; ///< The samples are rotated by `sensorPoses`. Kept in the stream.

    SensorData();
    SensorData(SensorData const& other);
    ~SensorData();
    SensorData& operator=(SensorData const& other);

    /// Adds the samples and poses of another store, sharing its records. Where both have a sample of a sensor
    /// at one tick, or a pose of one sensor, that of this store stays. A recording that follows in time costs
    /// the same for every sample, however long this one is.
    /// @throws oV::InternalErrorException if the stores differ in `posesApplied`; this store is as it was
    /// then
    SensorData& operator+=(SensorData const& other);

    /// Rotates the samples of each sensor by its pose and sets `posesApplied`; nothing if that is set
    /// already. One task for each pose runs on TBB's threads.
    ///
    /// A name is looked up in `imuData`, then `rangefinderData`, then `secondRangefinderData`, and only the
    /// first that has it is rotated. Callers may rely on what is lost or kept: translations have no effect,
    /// origins stay, magnetic fields and auxiliaries are dropped, and only the rotation of inertial samples
    /// is brought to unit length.
    ///
    /// An exception, such as for lack of memory, reaches the caller and leaves `posesApplied` false; some
    /// samples may be rotated by then.
    void applyPoses();

    /// All samples of all sensors in the order of time, each record shared with this store. Never empty as a
    /// pointer. The view lives on by itself.
    [[nodiscard]] std::shared_ptr<std::map<int64, TimedData>> createTimedData() const;

    /// Moves every sample along the time axis: its key to `f(key)`, its time stamp through `f` by way of
    /// ticks. `f` must be pure. Of several samples of a sensor that meet at one tick, the one that was latest
    /// stays; sensors without samples are gone afterwards. The times of points within a burst stay.
    ///
    /// What `f` throws passes through. The kinds of samples are handled one after the other, each as a whole:
    /// in the order inertial, both range sets, absolute poses, scanning status.
    /// @throws std::bad_function_call if `f` is empty and there is a sample
    void modifyTime(std::function<int64(int64)> const& f);

    /// A new store with what the next frame of the stream holds, or an empty pointer; the stream is left
    /// directly behind the frame.
    ///
    /// Fails if the stream is not good on entry or ends early, if the buffer is not a sound one of the
    /// schema, if it holds more than 1,000,000 tables (the root, each sensor, each sample, each pose), if a
    /// sample lacks one of its vectors or a sensor pose its pose, or if it would unpack to more than sixteen
    /// times its size. Of several samples of a sensor at one tick, and of several poses of one sensor, the
    /// last in the file stays.
    ///
    /// Records are made in blocks of up to 64 of one sensor; whoever holds on to one keeps its block in
    /// memory.
    ///
    /// A byte count that promises more than the stream holds costs address space only; one that cannot be
    /// allocated passes the allocation's exception through, with the stream behind the count. An exception
    /// that the stream is set to raise passes through too.
    /// @throws std::bad_alloc, std::length_error
    [[nodiscard]] static std::shared_ptr<SensorData> read(std::istream& stream);

    /// Writes one frame at the stream's position; nothing is flushed. True if the stream is good afterwards.
    /// False also, with nothing written, if the store's buffer could pass the format's limit of 2 GiB,
    /// counted with every table at its largest.
    [[nodiscard]] bool write(std::ostream& stream) const;
};

} // namespace oV::Roamscan

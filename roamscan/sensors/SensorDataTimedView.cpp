/// @file
/// The view of a store by time: a k-way merge of the samples of all sensors, with a heap.

#include <roamscan/sensors/SensorData.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace oV::Roamscan
{

namespace
{

using TimedData = SensorData::TimedData;

// A position in the samples of one sensor.
class Cursor
{
public:
    virtual ~Cursor() = default;
    [[nodiscard]] virtual int64 key() const = 0;
    virtual void enter(TimedData& entry) const = 0;
    virtual bool advance() = 0;
};

template <typename T>
class SensorCursor final : public Cursor
{
public:
    using Target = std::map<std::string, std::shared_ptr<T const>> TimedData::*;

    SensorCursor(std::string const& name, SampleMap<T> const& samples, Target target)
        : name_(&name), position_(samples.begin()), end_(samples.end()), target_(target)
    {}

    [[nodiscard]] int64 key() const override { return position_->first; }
    void enter(TimedData& entry) const override
    {
        (entry.*target_).insert_or_assign(*name_, position_->second);
    }
    bool advance() override { return ++position_ != end_; }

private:
    std::string const* name_;
    typename SampleMap<T>::const_iterator position_;
    typename SampleMap<T>::const_iterator end_;
    Target target_;
};

using Cursors = std::vector<std::unique_ptr<Cursor>>;

template <typename T>
void addCursors(Cursors& cursors,
                SensorData::Samples<T> const& sensors,
                typename SensorCursor<T>::Target target)
{
    for (auto const& [name, samples] : sensors) {
        if (!samples.empty()) {
            cursors.push_back(std::make_unique<SensorCursor<T>>(name, samples, target));
        }
    }
}

bool isLater(std::unique_ptr<Cursor> const& a, std::unique_ptr<Cursor> const& b)
{
    return a->key() > b->key();
}

} // namespace

std::shared_ptr<std::map<int64, SensorData::TimedData>> SensorData::createTimedData() const
{
    Cursors cursors;
    addCursors<mapping::ImuData>(cursors, imuData, &TimedData::imuData);
    addCursors<mapping::RangefinderData>(cursors, rangefinderData, &TimedData::rangefinderData);
    addCursors<mapping::RangefinderData>(cursors, secondRangefinderData, &TimedData::secondRangefinderData);
    addCursors<mapping::AbsolutePose2DData>(cursors, absolutePoseData, &TimedData::absolutePoseData);
    addCursors<mapping::ScanningStatusData>(cursors, scanningStatusData, &TimedData::scanningStatusData);

    // The sensor with the earliest sample is at the front of the heap, so the view only grows at its end.
    auto view = std::make_shared<std::map<int64, TimedData>>();
    std::make_heap(cursors.begin(), cursors.end(), isLater);
    while (!cursors.empty()) {
        std::pop_heap(cursors.begin(), cursors.end(), isLater);
        auto& cursor = cursors.back();
        cursor->enter(view->try_emplace(view->end(), cursor->key())->second);
        if (cursor->advance()) {
            std::push_heap(cursors.begin(), cursors.end(), isLater);
        } else {
            cursors.pop_back();
        }
    }
    return view;
}

} // namespace oV::Roamscan

#include "bench/baselines/Tf2Lookup.h"

#include <geometry_msgs/TransformStamped.h>
#include <tf2/buffer_core.h>

#include <memory>
#include <tuple>

namespace bench
{

std::function<FlatPose(double)> makeTf2Lookup(std::vector<std::pair<double, FlatPose>> const& poses)
{
    auto const buffer =
        std::make_shared<tf2::BufferCore>(ros::Duration(1e8)); // seconds; longer than any walk
    geometry_msgs::TransformStamped stamped;
    stamped.header.frame_id = "world";
    stamped.child_frame_id = "device";
    auto& [translation, rotation] = stamped.transform;
    for (auto const& [time, pose] : poses) {
        stamped.header.stamp.fromSec(time);
        std::tie(translation.x, translation.y, translation.z) = std::tie(pose[0], pose[1], pose[2]);
        std::tie(rotation.w, rotation.x, rotation.y, rotation.z) =
            std::tie(pose[3], pose[4], pose[5], pose[6]);
        buffer->setTransform(stamped, "bench");
    }
    return [buffer](double seconds) -> FlatPose {
        auto const& [t, r] = buffer->lookupTransform("world", "device", ros::Time(seconds)).transform;
        return {t.x, t.y, t.z, r.w, r.x, r.y, r.z};
    };
}

} // namespace bench

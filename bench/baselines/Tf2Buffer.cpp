#include "bench/baselines/Tf2Buffer.h"

#include <geometry_msgs/TransformStamped.h>
#include <tf2/buffer_core.h>

namespace bench
{

struct Tf2Buffer::Implementation
{
    tf2::BufferCore core{ros::Duration(1e8)}; // seconds; longer than any walk
};

Tf2Buffer::Tf2Buffer(std::vector<double> const& times, std::vector<FlatPose> const& poses)
    : implementation_(std::make_unique<Implementation>())
{
    geometry_msgs::TransformStamped stamped;
    stamped.header.frame_id = "world";
    stamped.child_frame_id = "device";
    auto& [translation, rotation] = stamped.transform;
    for (std::size_t i = 0; i < times.size(); ++i) {
        stamped.header.stamp.fromSec(times[i]);
        translation.x = poses[i][0];
        translation.y = poses[i][1];
        translation.z = poses[i][2];
        rotation.w = poses[i][3];
        rotation.x = poses[i][4];
        rotation.y = poses[i][5];
        rotation.z = poses[i][6];
        implementation_->core.setTransform(stamped, "bench");
    }
}

Tf2Buffer::~Tf2Buffer() = default;

Tf2Buffer::FlatPose Tf2Buffer::sample(double seconds) const
{
    auto const found = implementation_->core.lookupTransform("world", "device", ros::Time(seconds)).transform;
    return {found.translation.x,
            found.translation.y,
            found.translation.z,
            found.rotation.w,
            found.rotation.x,
            found.rotation.y,
            found.rotation.z};
}

} // namespace bench

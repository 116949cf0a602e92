#include "tools/simulation/AnchorScan.h"

#include "tools/simulation/Instrument.h"

#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <cmath>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double metadataSpan = 0.1; // seconds, of the metadata around the picture

AnchorScanMetadata::PanoramaPicture pictureOf(std::string const& name, double time)
{
    AnchorScanMetadata::PanoramaPicture picture;
    picture.fileName = name;
    picture.camSerialNumber = "SIM-1";
    picture.content = AnchorScanMetadata::PanoramaPicture::Content::ContentStitched;
    picture.imageOrientation = AnchorScanMetadata::PanoramaPicture::ImageOrientation::OrientationUpright;
    picture.camManufacturer = "simulated";
    picture.camModel = "simulated panorama camera";
    picture.camFirmwareVersion = "1.0";
    picture.time = TimeConversion::convertToIntegerTime(time);
    return picture;
}

} // namespace

AnchorScan
anchorScan(Motion const& motion, Eigen::Matrix3d const& planFromBuilding, std::string const& pictureName)
{
    double const start = motion.startTime();
    double const stop = motion.stopTime();
    double const time = start + (stop - start) / 2.0;
    Eigen::Isometry3d const pose = motion.at(time);
    Eigen::Vector3d const forwards = planFromBuilding * pose.linear().col(0);

    AnchorScan scan;
    scan.camera.position = pose * instrument().at(Device::Device3).translation();
    scan.camera.planFromBuilding = planFromBuilding;
    scan.camera.heading = std::atan2(forwards.y(), forwards.x());
    scan.metadata.id = 1;
    scan.metadata.horizontalVelocity = 0.0;
    scan.metadata.horizontalAngle = scan.camera.heading;
    scan.metadata.startTime =
        TimeConversion::convertToIntegerTime(std::max(start, time - metadataSpan / 2.0));
    scan.metadata.endTime = TimeConversion::convertToIntegerTime(std::min(stop, time + metadataSpan / 2.0));
    scan.metadata.panoramaPictures.push_back(pictureOf(pictureName, time));
    return scan;
}

} // namespace oV::Roamscan::tool

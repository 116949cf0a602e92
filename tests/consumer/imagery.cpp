/// @file
/// A plug-in that uses the package's component Imagery.

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/AnchorScanMetadata.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <nlohmann/json.hpp>

namespace
{

// The class that is thrown is not exported; a plug-in catches its base class.
bool throwsVisibleException()
{
    auto const file = Bv_1_1::File::fromPath(L"nowhere/pano.nothing");
    try {
        oV::Roamscan::LargeImageSerialization::serializeImage(cv::Mat(2, 3, CV_8UC1), file);
        return false;
    } catch (oV::VisibleException const& failure) {
        return failure.getCode() == 18;
    }
}

} // namespace

int main()
{
    oV::Roamscan::AnchorScanMetadata metadata;
    metadata.id = 7;
    nlohmann::json const form = metadata;
    if (form.at("id") != 7 || form.get<oV::Roamscan::AnchorScanMetadata>().id != 7) {
        return 1;
    }
    return throwsVisibleException() ? 0 : 2;
}

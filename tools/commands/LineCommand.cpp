#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/RecordingFile.h"
#include "tools/scene/GltfWriter.h"
#include "tools/scene/ObjWriter.h"
#include "tools/scene/PathSceneOfObject.h"

#include <roamscan/frame/scene/Transform.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

struct LineArguments
{
    std::filesystem::path trajectory;
    Device from = Device::Device1;
    Device to = Device::Device0;
    bool withNodes = false;
    std::filesystem::path output;
};

using SceneWriter = void (*)(PathScene const& scene, std::ostream& stream);

/// The writer of the format that the file's ending names.
SceneWriter writerFor(std::filesystem::path const& output)
{
    std::string ending = utf8(output.extension());
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c;
    });
    if (ending == ".gltf") {
        return [](PathScene const& scene, std::ostream& stream) { writeGltf(scene, GltfForm::Text, stream); };
    }
    if (ending == ".glb") {
        return
            [](PathScene const& scene, std::ostream& stream) { writeGltf(scene, GltfForm::Binary, stream); };
    }
    if (ending == ".obj") {
        return writeObj;
    }
    throw fileError(output, "the format is unknown; name a file that ends in .gltf, .glb or .obj");
}

PathScene drawPath(LineArguments const& options)
{
    auto const data = readTrajectoryFile(options.trajectory).data;
    requirePosition(*data, options.from, options.trajectory);
    requirePosition(*data, options.to, options.trajectory);
    auto const name = Bv_1_1::String::fromNarrow(utf8(options.trajectory.stem()).c_str());
    auto const scene = data->lineFromTrajectory(options.withNodes, name, options.from, options.to);
    return pathSceneOf(*scene);
}

void report(PathScene const& scene, std::filesystem::path const& output, std::ostream& out)
{
    out << oneLine(utf8(output)) << ": a line through " << counted(scene.line.size(), "point", "points");
    if (!scene.markers.empty()) {
        out << ", " << counted(scene.markers.size(), "node", "nodes") << " as "
            << (scene.hasSpheres() ? "spheres" : "points");
    }
    out << '\n';
    if (std::size_t const ignored = std::max(scene.ignoredPoints, scene.ignoredMarkers); ignored > 0) {
        out << "  " << counted(ignored, "node", "nodes")
            << " ignored: the position is not finite or too far away\n";
    }
}

void run(LineArguments const& options, std::ostream& out)
{
    SceneWriter const write = writerFor(options.output);
    requireDistinctFiles({options.trajectory, options.output});
    PathScene const scene = drawPath(options);
    if (scene.empty()) {
        throw fileError(options.trajectory, "there is nothing to draw: it has fewer than two usable nodes");
    }
    OutputFile file(options.output);
    write(scene, file.stream());
    file.commit();
    report(scene, options.output, out);
}

} // namespace

void addLine(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<LineArguments>();
    CLI::App* const command =
        app.add_subcommand("line", "Draw the path of a device as a scene for viewers: glTF 2.0 or OBJ");
    addPath(*command, "--trajectory", options->trajectory, "The trajectory of the walk")->required();
    command->add_option("--from", options->from, "The device whose path is drawn, 0 to 3")
        ->required()
        ->check(CLI::Range(0, 3));
    command->add_option("--to", options->to, "The device in whose frame the path is drawn, 0 to 3")
        ->required()
        ->check(CLI::Range(0, 3));
    command->add_flag("--nodes", options->withNodes, "Mark each node with a sphere of 1 cm radius");
    addPath(*command, "OUT", options->output, "The scene to write: .gltf, .glb or .obj")->required();
    command->footer(
        "The glTF is y-up, with float coordinates relative to a node named origin. The OBJ is z-up, with\n"
        "unchanged coordinates. A scene of more than 10,000 markers has points instead of spheres.\n"
        "Example:\n  roamscan line --trajectory walk/walk.trajectory --from 1 --to 0 walk.glb\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool

#include "tools/scene/GltfWriter.h"

#include "tools/scene/SceneOrigin.h"
#include "tools/scene/SphereMesh.h"

#include <roamscan/frame/platform/LittleEndian.h>

// This source compiles the library, and leaves out what reads and writes pictures.
#define TINYGLTF_IMPLEMENTATION
#define TINYGLTF_NO_EXTERNAL_IMAGE
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#include <tiny_gltf.h>

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numbers>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Position = std::array<float, 3>;
using Colour = std::array<double, 4>; // red, green, blue, opacity

constexpr Colour lineColour{0.8, 0.1, 0.1, 1.0};
constexpr Colour markerColour{0.1, 0.3, 0.8, 1.0};
constexpr int sphereSplits = 2;

template <typename Item>
int add(std::vector<Item>& items, Item item)
{
    items.push_back(std::move(item));
    return static_cast<int>(items.size()) - 1;
}

/// Adds a value to the model's one buffer.
template <std::unsigned_integral Value>
void putValue(tinygltf::Model& model, Value value)
{
    std::ranges::copy(toLittleEndian(value), std::back_inserter(model.buffers.front().data));
}

/// Adds an accessor of what was put into the buffer from `start` on.
int addAccessor(tinygltf::Model& model, std::size_t start, int target, tinygltf::Accessor accessor)
{
    tinygltf::BufferView view;
    view.buffer = 0;
    view.byteOffset = start;
    view.byteLength = model.buffers.front().data.size() - start;
    view.target = target;
    accessor.bufferView = add(model.bufferViews, std::move(view));
    return add(model.accessors, std::move(accessor));
}

int addPositions(tinygltf::Model& model, std::span<Position const> positions)
{
    std::size_t const start = model.buffers.front().data.size();
    Position least = positions.front();
    Position largest = positions.front();
    for (Position const& position : positions) {
        for (std::size_t i = 0; i < position.size(); ++i) {
            least[i] = std::min(least[i], position[i]);
            largest[i] = std::max(largest[i], position[i]);
            putValue(model, std::bit_cast<std::uint32_t>(position[i]));
        }
    }
    tinygltf::Accessor accessor;
    accessor.componentType = TINYGLTF_COMPONENT_TYPE_FLOAT;
    accessor.type = TINYGLTF_TYPE_VEC3;
    accessor.count = positions.size();
    accessor.minValues.assign(least.begin(), least.end());
    accessor.maxValues.assign(largest.begin(), largest.end());
    return addAccessor(model, start, TINYGLTF_TARGET_ARRAY_BUFFER, std::move(accessor));
}

int addIndices(tinygltf::Model& model, TriangleMesh const& mesh)
{
    std::size_t const start = model.buffers.front().data.size();
    for (auto const& triangle : mesh.triangles) {
        for (std::uint16_t const index : triangle) {
            putValue(model, index);
        }
    }
    tinygltf::Accessor accessor;
    accessor.componentType = TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT;
    accessor.type = TINYGLTF_TYPE_SCALAR;
    accessor.count = 3 * mesh.triangles.size();
    return addAccessor(model, start, TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER, std::move(accessor));
}

/// Adds a mesh of one primitive in one colour.
int addMesh(tinygltf::Model& model, tinygltf::Primitive primitive, Colour const& colour)
{
    tinygltf::Material material;
    material.pbrMetallicRoughness.baseColorFactor.assign(colour.begin(), colour.end());
    material.pbrMetallicRoughness.metallicFactor = 0.0;
    primitive.material = add(model.materials, std::move(material));
    tinygltf::Mesh mesh;
    mesh.primitives.push_back(std::move(primitive));
    return add(model.meshes, std::move(mesh));
}

/// `mode` says what the positions are: a line strip, or points.
int addMesh(tinygltf::Model& model, std::span<Position const> positions, int mode, Colour const& colour)
{
    tinygltf::Primitive primitive;
    primitive.mode = mode;
    primitive.attributes["POSITION"] = addPositions(model, positions);
    return addMesh(model, std::move(primitive), colour);
}

int addSphereMesh(tinygltf::Model& model)
{
    TriangleMesh const sphere = unitSphere(sphereSplits);
    tinygltf::Primitive primitive;
    primitive.mode = TINYGLTF_MODE_TRIANGLES;
    int const positions = addPositions(model, sphere.vertices);
    primitive.attributes["POSITION"] = positions;
    primitive.attributes["NORMAL"] = positions; // the radius is 1
    primitive.indices = addIndices(model, sphere);
    return addMesh(model, std::move(primitive), markerColour);
}

tinygltf::Node meshNode(std::string name, int mesh)
{
    tinygltf::Node node;
    node.name = std::move(name);
    node.mesh = mesh;
    return node;
}

Position relativeTo(ScenePoint const& origin, ScenePoint const& point)
{
    return {static_cast<float>(point.x - origin.x),
            static_cast<float>(point.y - origin.y),
            static_cast<float>(point.z - origin.z)};
}

tinygltf::Node lineNode(tinygltf::Model& model, PathScene const& scene, ScenePoint const& origin)
{
    std::vector<Position> corners;
    corners.reserve(scene.line.size());
    for (ScenePoint const& corner : scene.line) {
        corners.push_back(relativeTo(origin, corner));
    }
    return meshNode("path", addMesh(model, corners, TINYGLTF_MODE_LINE_STRIP, lineColour));
}

tinygltf::Node pointsNode(tinygltf::Model& model, PathScene const& scene, ScenePoint const& origin)
{
    std::vector<Position> points;
    points.reserve(scene.markers.size());
    for (PathMarker const& marker : scene.markers) {
        points.push_back(relativeTo(origin, marker.position));
    }
    return meshNode("nodes", addMesh(model, points, TINYGLTF_MODE_POINTS, markerColour));
}

tinygltf::Node sphereNode(PathMarker const& marker, int sphere, ScenePoint const& origin)
{
    tinygltf::Node node = meshNode(marker.name, sphere);
    node.translation = {
        marker.position.x - origin.x, marker.position.y - origin.y, marker.position.z - origin.z};
    node.scale = {marker.radius, marker.radius, marker.radius};
    return node;
}

/// Adds what is drawn, and returns the node that holds it.
tinygltf::Node originNode(tinygltf::Model& model, PathScene const& scene)
{
    ScenePoint const origin = sceneOrigin(scene);
    tinygltf::Node node;
    node.name = "origin";
    node.translation = {origin.x, origin.y, origin.z};
    if (scene.hasLine()) {
        node.children.push_back(add(model.nodes, lineNode(model, scene, origin)));
    }
    if (!scene.hasSpheres()) {
        node.children.push_back(add(model.nodes, pointsNode(model, scene, origin)));
    } else if (!scene.markers.empty()) {
        int const sphere = addSphereMesh(model);
        for (PathMarker const& marker : scene.markers) {
            node.children.push_back(add(model.nodes, sphereNode(marker, sphere, origin)));
        }
    }
    return node;
}

tinygltf::Model toModel(PathScene const& scene)
{
    tinygltf::Model model;
    model.asset.version = "2.0";
    model.asset.generator = "roamscan " ROAMSCAN_TOOL_VERSION;
    model.buffers.resize(1);

    constexpr double halfRoot = std::numbers::sqrt2 / 2.0;
    tinygltf::Node root;
    root.name = scene.name;
    root.rotation = {-halfRoot, 0.0, 0.0, halfRoot}; // -90 degrees about x: z up becomes y up
    root.children = {add(model.nodes, originNode(model, scene))};

    tinygltf::Scene whole;
    whole.nodes = {add(model.nodes, std::move(root))};
    model.defaultScene = add(model.scenes, std::move(whole));
    return model;
}

} // namespace

void writeGltf(PathScene const& scene, GltfForm form, std::ostream& stream)
{
    tinygltf::Model const model = toModel(scene);
    bool const isBinary = form == GltfForm::Binary;
    bool const isIndented = true;
    tinygltf::TinyGLTF().WriteGltfSceneToStream(&model, stream, isIndented, isBinary);
}

} // namespace oV::Roamscan::tool

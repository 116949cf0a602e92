#include "tools/scene/ObjWriter.h"

#include "tools/console/Text.h"
#include "tools/scene/SphereMesh.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

/// Writes vertices, and elements that name them. The format counts vertices from 1 through the whole file.
class ObjFile
{
public:
    explicit ObjFile(std::ostream& stream) : stream_(stream) { stream_ << "# metres, z up\n"; }

    /// Begins an object. The vertices of its elements count from the next one that is written.
    void begin(std::string const& name)
    {
        stream_ << "o " << oneLine(name) << '\n';
        first_ = written_ + 1;
    }

    void vertex(ScenePoint const& position)
    {
        stream_ << 'v';
        for (double const coordinate : {position.x, position.y, position.z}) {
            stream_ << ' ';
            number(coordinate);
        }
        stream_ << '\n';
        ++written_;
    }

    void triangle(std::array<std::uint16_t, 3> const& corners)
    {
        stream_ << 'f';
        for (std::uint64_t const corner : corners) {
            stream_ << ' ' << first_ + corner;
        }
        stream_ << '\n';
    }

    /// A line through all vertices of the object.
    void line()
    {
        // Readers have limits on the length of a text line. The next element begins where the last one ends.
        for (std::uint64_t start = first_; start < written_; start += perElement - 1) {
            element('l', start, std::min(start + perElement - 1, written_));
        }
    }

    /// A point at each vertex of the object.
    void points()
    {
        for (std::uint64_t start = first_; start <= written_; start += perElement) {
            element('p', start, std::min(start + perElement - 1, written_));
        }
    }

private:
    static constexpr std::uint64_t perElement = 64;

    void number(double value)
    {
        std::array<char, 32> text{};
        auto const end = std::to_chars(text.begin(), text.end(), value).ptr;
        stream_.write(text.data(), end - text.data());
    }

    void element(char keyword, std::uint64_t start, std::uint64_t last)
    {
        stream_ << keyword;
        for (std::uint64_t vertex = start; vertex <= last; ++vertex) {
            stream_ << ' ' << vertex;
        }
        stream_ << '\n';
    }

    std::ostream& stream_;
    std::uint64_t written_ = 0;
    std::uint64_t first_ = 1;
};

void writeOctahedron(PathMarker const& marker, TriangleMesh const& octahedron, ObjFile& file)
{
    file.begin(marker.name);
    for (auto const& [x, y, z] : octahedron.vertices) {
        file.vertex({marker.position.x + marker.radius * x,
                     marker.position.y + marker.radius * y,
                     marker.position.z + marker.radius * z});
    }
    for (auto const& triangle : octahedron.triangles) {
        file.triangle(triangle);
    }
}

} // namespace

void writeObj(PathScene const& scene, std::ostream& stream)
{
    ObjFile file(stream);
    if (scene.hasLine()) {
        file.begin(scene.name);
        std::ranges::for_each(scene.line, [&](ScenePoint const& corner) { file.vertex(corner); });
        file.line();
    }
    if (!scene.hasSpheres()) {
        file.begin("nodes");
        for (PathMarker const& marker : scene.markers) {
            file.vertex(marker.position);
        }
        file.points();
        return;
    }
    TriangleMesh const octahedron = unitSphere(0);
    for (PathMarker const& marker : scene.markers) {
        writeOctahedron(marker, octahedron, file);
    }
}

} // namespace oV::Roamscan::tool

#include "tools/clouds/LasHeader.h"

#include "tools/clouds/LasFormat.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t shortHeader = 227;
constexpr std::uint16_t extraBytesRecord = 4;
constexpr std::size_t mostExtraNumbers = 1000;

using Bytes = std::vector<char>;

class HeaderReader
{
public:
    explicit HeaderReader(CloudInput& input) : input_(input) {}

    [[nodiscard]] LasHeader read()
    {
        Bytes const bytes = take(0, shortHeader, "header");
        unsigned const minor = loadLittleEndian<std::uint8_t>(&bytes[25]);
        require(loadLittleEndian<std::uint8_t>(&bytes[24]) == 1 && minor <= 4,
                "is of an unknown version; LAS 1.0 to 1.4 are known");
        auto const headerSize = loadLittleEndian<std::uint16_t>(&bytes[94]);
        auto const dataOffset = loadLittleEndian<std::uint32_t>(&bytes[96]);
        require(headerSize >= (minor >= 4 ? lasHeaderSize : shortHeader) && dataOffset >= headerSize &&
                    dataOffset <= input_.size,
                "the header is damaged: the points begin at byte " + std::to_string(dataOffset) + " of " +
                    std::to_string(input_.size));
        takeFormat(bytes);
        header_.pointCount = loadLittleEndian<std::uint32_t>(&bytes[107]);
        if (minor >= 4) {
            header_.pointCount = loadLittleEndian<std::uint64_t>(&take(247, 8, "header")[0]);
        }
        takeTransform(bytes);
        takeRecords(headerSize, dataOffset, loadLittleEndian<std::uint32_t>(&bytes[100]));
        describeRest();
        input_.stream->seekg(static_cast<std::streamoff>(dataOffset));
        return header_;
    }

private:
    void require(bool fulfilled, std::string const& why) const
    {
        if (!fulfilled) {
            throw fileError(input_.name, why);
        }
    }

    [[nodiscard]] Bytes take(std::uint64_t from, std::size_t size, std::string const& what)
    {
        require(from <= input_.size && size <= input_.size - from,
                "ends within its " + what + ", at byte " + std::to_string(input_.size) +
                    "; the file is cut off");
        Bytes bytes(size);
        input_.stream->seekg(static_cast<std::streamoff>(from));
        input_.stream->read(bytes.data(), static_cast<std::streamsize>(size));
        require(input_.stream->good(), "cannot be read at byte " + std::to_string(from));
        return bytes;
    }

    void takeFormat(Bytes const& bytes)
    {
        unsigned const format = loadLittleEndian<std::uint8_t>(&bytes[104]);
        require((format & 0xC0U) == 0, "its points are compressed (LAZ); decompress the file to LAS");
        require(format <= 10,
                "the point format " + std::to_string(format) + " is unknown; 0 to 10 are known");
        require(
            format != 0 && format != 2,
            "points of the format " + std::to_string(format) +
                " have no GPS time, and a point is placed by its time; the formats 1 and 3 to 10 have it");
        header_.format = format;
        header_.recordSize = loadLittleEndian<std::uint16_t>(&bytes[105]);
        require(header_.recordSize >= lasRecordSize(format),
                "the header is damaged: points of the format " + std::to_string(format) + " take " +
                    std::to_string(lasRecordSize(format)) + " bytes, not " +
                    std::to_string(header_.recordSize));
    }

    void takeTransform(Bytes const& bytes)
    {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            header_.scale[axis] = loadLittleEndian<double>(&bytes[131 + 8 * axis]);
            header_.offset[axis] = loadLittleEndian<double>(&bytes[155 + 8 * axis]);
            require(std::isfinite(header_.scale[axis]) && header_.scale[axis] != 0.0 &&
                        std::isfinite(header_.offset[axis]),
                    "the header is damaged: the scale and offset of coordinates must be finite");
        }
    }

    /// The variable length records between the header and the points.
    void takeRecords(std::uint64_t from, std::uint64_t end, std::uint32_t count)
    {
        for (std::uint32_t i = 0; i < count && from + lasRecordHeaderSize <= end; ++i) {
            Bytes const head = take(from, lasRecordHeaderSize, "records");
            std::string_view const user(&head[2], 16);
            auto const record = loadLittleEndian<std::uint16_t>(&head[18]);
            auto const size = loadLittleEndian<std::uint16_t>(&head[20]);
            from += lasRecordHeaderSize;
            if (user.substr(0, user.find('\0')) == "LASF_Spec" && record == extraBytesRecord &&
                from + size <= end) {
                takeDescriptors(take(from, size, "records"));
            }
            from += size;
        }
    }

    void takeDescriptors(Bytes const& bytes)
    {
        for (std::size_t at = 0; at + lasDescriptorSize <= bytes.size(); at += lasDescriptorSize) {
            takeDescriptor(&bytes[at]);
        }
    }

    void takeDescriptor(char const* bytes)
    {
        constexpr std::array types{FieldType::UInt8,
                                   FieldType::Int8,
                                   FieldType::UInt16,
                                   FieldType::Int16,
                                   FieldType::UInt32,
                                   FieldType::Int32,
                                   FieldType::UInt64,
                                   FieldType::Int64,
                                   FieldType::Float,
                                   FieldType::Double};
        unsigned const type = loadLittleEndian<std::uint8_t>(bytes + 2);
        unsigned const options = loadLittleEndian<std::uint8_t>(bytes + 3);
        std::string_view const padded(bytes + 4, 32);
        std::string const name(padded.substr(0, padded.find('\0')));
        if (type == 0) { // bytes without a meaning, as many as the options say
            add({name, FieldType::UInt8}, options);
            return;
        }
        if (type > 30) {
            return; // the rest of the record is described as bytes
        }
        std::size_t const dimensions = (type - 1) / types.size() + 1;
        for (std::size_t i = 0; i < dimensions; ++i) {
            LasExtraField field{name, types[(type - 1) % types.size()]};
            bool const hasScale = (options & 8U) != 0;
            bool const hasOffset = (options & 16U) != 0;
            field.scale = hasScale ? loadLittleEndian<double>(bytes + 112 + 8 * i) : 1.0;
            field.offset = hasOffset ? loadLittleEndian<double>(bytes + 136 + 8 * i) : 0.0;
            field.isScaled = field.scale != 1.0 || field.offset != 0.0;
            if (dimensions > 1) {
                field.name += '_' + std::to_string(i);
            }
            add(field, 1);
        }
    }

    /// Adds `count` fields as far as the record has room for them.
    void add(LasExtraField field, unsigned count)
    {
        std::string const name = field.name;
        for (unsigned i = 0; i < count; ++i) {
            field.byte = end_ == 0 ? lasRecordSize(header_.format) : end_;
            if (field.byte + sizeOf(field.type) > header_.recordSize) {
                return;
            }
            if (count > 1) {
                field.name = name + '_' + std::to_string(i);
            }
            end_ = field.byte + sizeOf(field.type);
            require(header_.extra.size() < mostExtraNumbers,
                    "its points have more than " + std::to_string(mostExtraNumbers) + " extra numbers");
            header_.extra.push_back(field);
        }
    }

    /// Bytes of the record that no descriptor describes.
    void describeRest()
    {
        std::size_t const end = end_ == 0 ? lasRecordSize(header_.format) : end_;
        std::size_t const rest = header_.recordSize - end;
        for (std::size_t i = 0; i < rest; ++i) {
            add({"extra_byte_" + std::to_string(i), FieldType::UInt8}, 1);
        }
    }

    CloudInput& input_;
    LasHeader header_;
    std::size_t end_ = 0; ///< Of the described part of a record.
};

} // namespace

LasHeader readLasHeader(CloudInput& input)
{
    return HeaderReader(input).read();
}

} // namespace oV::Roamscan::tool

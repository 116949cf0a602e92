#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// What a command says about several files, one after the other. A bad file is one line on `err` and does not
/// stop the others.
class FileReport
{
public:
    using Json = nlohmann::ordered_json;

    explicit FileReport(std::ostream& err) : err_(err) {}

    /// Adds the object that `describe` gives for the file, or an object with what it throws.
    void add(std::filesystem::path const& file, std::function<Json()> const& describe);

    /// Prints one array with the objects of all files.
    void print(std::ostream& out) const;

    /// Whether `describe` came to its end for each file.
    [[nodiscard]] bool allRead() const { return allRead_; }

private:
    std::ostream& err_;
    Json document_ = Json::array();
    bool allRead_ = true;
};

} // namespace oV::Roamscan::tool

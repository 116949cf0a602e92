#include "bench/workload/ScratchFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace bench
{

namespace
{

class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "roamscan-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot create a temporary folder");
        }
        path_ = name;
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace

std::filesystem::path const& scratchFolder()
{
    static ScratchFolder const folder;
    return folder.path();
}

} // namespace bench

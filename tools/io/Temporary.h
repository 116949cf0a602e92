#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace oV::Roamscan::tool
{

/// The name of a file or folder that is removed with this object, and also if a signal ends the process.
///
/// Objects are constructed and destroyed on the main thread only. The constructor creates no file.
class Temporary
{
public:
    /// What may be there under the name.
    enum class Kind : std::uint8_t
    {
        File,       ///< A file.
        Tiles,      ///< A folder of files "0.png", "1.png" and so on. It is removed with everything in it.
        EmptyFolder ///< A folder, which is removed only if nothing else is in it.
    };

    /// @param extension of the files in a folder of tiles, such as ".png"
    explicit Temporary(std::filesystem::path const& path,
                       Kind kind = Kind::File,
                       std::string const& extension = {});
    Temporary(Temporary const&) = delete;
    Temporary& operator=(Temporary const&) = delete;
    ~Temporary();

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

    /// Leaves what has the name, for example because it was renamed.
    void release();

    /// Removes what has the name of any of the objects, newest first. Calls only async-signal-safe functions.
    /// @return whether nothing of it is left
    static bool removeAll();

private:
    [[nodiscard]] bool removeByName() const;

    std::filesystem::path path_;
    std::filesystem::path::string_type extension_;
    Kind kind_;
    Temporary* older_ = nullptr; // a list of all objects; its head is in the source
};

/// A random name in the system's folder for temporary files ($TMPDIR or /tmp).
[[nodiscard]] std::filesystem::path nameInTemporaryFolder();

/// Holds back the signals that removeTemporariesOnSignals() handles, on the calling thread. They take effect
/// at the end of the outermost scope.
class SignalsHeld
{
public:
    SignalsHeld();
    SignalsHeld(SignalsHeld const&) = delete;
    SignalsHeld& operator=(SignalsHeld const&) = delete;
    ~SignalsHeld();

private:
    bool wasHeld_ = false;
};

/// From now on, SIGINT, SIGTERM, SIGHUP, SIGPIPE and SIGXFSZ remove all temporary files and folders, newest
/// first, before they end the process with their usual exit status. Signals that are ignored, as under nohup,
/// stay ignored. On Windows, Ctrl-C, Ctrl-Break and the closing of the console do the same; a file that is
/// open must be one of createRemovable(). Call it on the main thread, once.
void removeTemporariesOnSignals();

} // namespace oV::Roamscan::tool

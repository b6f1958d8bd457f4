// The data are known by the folder of what the program cannot do without.
#include "platform/data_folders.h"

#include "platform/platform.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#ifndef QUARVELLO_DATA_FOLDER
#define QUARVELLO_DATA_FOLDER "/usr/share/games/quarvello"
#endif

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char Needed[] = "default"; // pictures and models in place of those that cannot be loaded
constexpr char Settings[] = "config.cfg";

constinit std::unique_ptr<const fs::path> installed; // none while the working directory holds the data
constinit bool mayWrite = true;

bool HoldsData(const fs::path& folder) {
    std::error_code ignored;
    return fs::is_directory(folder / Needed, ignored);
}

fs::path InstalledFolder(const NamedFolders& named) {
    std::error_code ignored;
    if (!named.option.empty()) return fs::absolute(named.option, ignored);
    if (!named.environment.empty()) return fs::absolute(named.environment, ignored);
    return QUARVELLO_DATA_FOLDER;
}

// Empty when the environment names no home.
fs::path OwnFolder() {
    const char* const data = std::getenv("XDG_DATA_HOME");
    if (data && fs::path(data).is_absolute()) return fs::path(data) / "quarvello";
    const char* const home = std::getenv("HOME");
    return home && *home ? fs::path(home) / ".local/share/quarvello" : fs::path();
}

// Makes the player's folder the working directory; false when nothing can be written there.
bool EnterOwnFolder(const fs::path& own) {
    std::error_code error;
    if (!own.empty()) fs::create_directories(own, error);
    fs::current_path(own, error);
    if (error) {
        mayWrite = false;
        fs::current_path("/", error); // so that nothing that lies about is taken for the player's
        return false;
    }
    return HasWriteAccess(".");
}

} // namespace

std::string ChooseFolders(const NamedFolders& named, bool& mayStart) {
    std::error_code ignored;
    mayStart = true;
    if (HoldsData(".")) return "";
    const fs::path data = InstalledFolder(named);
    if (!HoldsData(data)) {
        mayStart = false;
        return "no data: the folder \"" + std::string(Needed) + "\" is missing in " + data.string() +
               " and in " + fs::current_path(ignored).string() + " (--data DIR names the data's folder)";
    }
    installed = std::make_unique<const fs::path>(data);
    const fs::path own = OwnFolder();
    if (!EnterOwnFolder(own))
        return "nothing can be written to " + (own.empty() ? "a home that is not named" : own.string()) +
               ": settings, scores and log.txt are not kept";
    // Never over one that is there, readable or not.
    if (!fs::exists(fs::symlink_status(Settings, ignored)))
        fs::copy_file(data / Settings, Settings, fs::copy_options::none, ignored);
    return "";
}

std::string DataPath(const char* path) {
    std::error_code ignored;
    if (!installed || *path == '\0' || fs::exists(fs::symlink_status(path, ignored))) return path;
    const fs::path found = *installed / path; // an absolute path stays itself
    return fs::exists(found, ignored) ? found.string() : path;
}

bool HasPlaceToWrite() {
    return mayWrite;
}

} // namespace platform

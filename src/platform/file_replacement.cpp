// A new file is called "~tmpNAME.XXXXXX". Only files of just that form, and only under the folder's lock, are
// taken for the leavings of a program that died: under the lock nobody else is writing one.
#include "platform/file_replacement.h"

#include "platform/data_folders.h"
#include "platform/platform.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#ifndef _WIN32
#include <sys/file.h>
#endif

namespace fs = std::filesystem;

namespace {

constexpr char UniquePart[] = ".XXXXXX";

fs::path FolderOf(const std::string& path) {
    const fs::path folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder;
}

#ifdef _WIN32

int MakeUnique(std::string& name) {
    if (_mktemp_s(name.data(), name.size() + 1) != 0) return -1;
    return _open(name.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY, _S_IREAD | _S_IWRITE);
}

void CopyRights(const std::string&, int) {}

#else

int MakeUnique(std::string& name) {
    return mkostemp(name.data(), O_CLOEXEC);
}

// A new file gets the rights of any file that the program makes. Some file systems have none to give; a save
// without them is better than no save.
void CopyRights(const std::string& from, int to) {
    struct stat old {};
    if (stat(from.c_str(), &old) != 0) {
        const mode_t mask = umask(0);
        umask(mask);
        old.st_mode = 0666U & ~mask;
    } else if (fchown(to, old.st_uid, old.st_gid) != 0) {
        old.st_mode &= 0777U;
    }
    static_cast<void>(fchmod(to, old.st_mode & 07777U));
}

#endif

} // namespace

namespace platform {

std::string FollowLinks(const std::string& path) {
    constexpr int MostLinks = 40;
    fs::path target = path;
    for (int links = 0; links < MostLinks; ++links) {
        std::error_code error;
        const fs::file_type type = fs::symlink_status(target, error).type();
        if (type == fs::file_type::none) return {};
        if (type != fs::file_type::symlink) return target.string();
        const fs::path next = fs::read_symlink(target, error);
        if (error) return {};
        target = target.parent_path() / next;
    }
    return {};
}

bool MayWrite(const std::string& path) {
    if (!HasPlaceToWrite()) return false;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) return true;
    return (status.permissions() & fs::perms::owner_write) != fs::perms::none && HasWriteAccess(path.c_str());
}

#ifdef _WIN32

bool FolderLock::Take(const std::string&) {
    return false;
}

void FolderLock::Release() {}

#else

bool FolderLock::Take(const std::string& file) {
    constexpr int Tries = 1000;
    constexpr unsigned Pause = 1; // ms
    Release();
    const int opened = open(FolderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) return false;
    for (int tries = 0; tries < Tries; ++tries) {
        if (flock(opened, LOCK_EX | LOCK_NB) == 0) {
            folder = opened;
            return true;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) break;
        Sleep(Pause);
    }
    close(opened);
    return false;
}

void FolderLock::Release() {
    if (folder >= 0) close(folder);
    folder = -1;
}

#endif

std::string FileReplacement::NameBeside(const std::string& path) {
    const fs::path whole = path;
    return (whole.parent_path() / ("~tmp" + whole.filename().string())).string();
}

void FileReplacement::RemoveAbandoned(const std::string& path) {
    const std::string begin = fs::path(NameBeside(path)).filename().string() + '.';
    const std::size_t length = begin.size() + sizeof UniquePart - 2;
    std::error_code error;
    for (fs::directory_iterator entry(FolderOf(path), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        if (name.size() == length && name.starts_with(begin) &&
            fs::is_regular_file(entry->symlink_status(ignored)))
            fs::remove(entry->path(), ignored);
    }
}

bool FileReplacement::Start(const std::string& path) {
    Cancel();
    target = path;
    name = NameBeside(path) + UniquePart;
    const int number = MakeUnique(name);
    if (number < 0) return false;
    CopyRights(path, number);
    stream.reset(fdopen(number, "wb"));
    if (stream) return true;
    close(number);
    std::remove(name.c_str());
    return false;
}

bool FileReplacement::Finish(const std::string& content) {
    if (!stream) return false;
    const bool written = std::fwrite(content.data(), 1, content.size(), stream.get()) == content.size() &&
                         FlushToDisk(stream.get());
    const bool closed = std::fclose(stream.release()) == 0;
    if (written && closed && ReplaceFileWith(name.c_str(), target.c_str())) return true;
    std::remove(name.c_str());
    return false;
}

void FileReplacement::Cancel() {
    if (!stream) return;
    stream.reset();
    std::remove(name.c_str());
}

} // namespace platform

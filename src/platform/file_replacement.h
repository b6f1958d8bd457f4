// Writes a file anew: the new content takes the old one's place in one step, or everything stays as it was.
// Rests on the system's files; where there are no folder locks, two programs may lose each other's changes,
// but never mix them.
#pragma once

#include "platform/file_stream.h"
#include "platform/not_copied.h"

#include <string>

namespace platform {

// The file that a path names in the end, behind any number of symbolic links; it need not exist. Empty when a
// link cannot be read.
[[nodiscard]] std::string FollowLinks(const std::string& path);

// Whether the owner of an existing file lets this program write to it. True for a file that does not exist.
[[nodiscard]] bool MayWrite(const std::string& path);

// Keeps the other programs that want it out of a folder. A program that ends, however it does, gives it up.
class FolderLock : NotCopied {
public:
    ~FolderLock() { Release(); }

    // Takes the lock of the folder in which `file` stands, and waits up to a second for whoever has it. False
    // when that was not enough or the folder cannot be locked.
    bool Take(const std::string& file);
    void Release();

private:
    int folder = -1;
};

class FileReplacement : NotCopied {
public:
    ~FileReplacement() { Cancel(); }

    // Makes a new file beside `path`, with a name that no other file has and the rights of the old file.
    // False when it cannot be made.
    [[nodiscard]] bool Start(const std::string& path);
    bool IsOpen() const { return stream != nullptr; }
    // Writes the content to the disk and puts it in the place of the old file. False when any of it failed:
    // the old file stays. Closed afterwards.
    [[nodiscard]] bool Finish(const std::string& content);
    // Removes the new file.
    void Cancel();

    // Removes what programs that died in the middle have left beside `path`. To be called under the folder's
    // lock: only then is nobody writing there.
    static void RemoveAbandoned(const std::string& path);
    // What the names of the new files beside `path` begin with.
    static std::string NameBeside(const std::string& path);

private:
    FileStream stream;
    std::string target;
    std::string name;
};

} // namespace platform

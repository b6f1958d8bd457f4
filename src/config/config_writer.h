// Saves settings: rewrites one top-level block of a configuration file and leaves the rest of the file as it
// was. The new file is made beside the old one and takes its place in one step, so that at every moment there
// is a whole file; if anything cannot be read or written, the old file stays.
#pragma once

#include "config/config_file.h"
#include "platform/file_replacement.h"
#include "platform/not_copied.h"

#include <string>
#include <vector>

class INI_Writer : NotCopied {
public:
    // Finishes a save that is under way.
    ~INI_Writer();

    // Starts the rewrite of `block` in the file `path`; what the block held is replaced by what is written
    // until Close. A missing block is appended, a missing file created. Failures are logged and leave the
    // writer closed; a file that is there but cannot be read, or that its owner made read-only, stays as it
    // is, and what is written for it is dropped without a word. A rewrite that is still under way is finished
    // first.
    void WriteExistantFile(const char* path, const char* block);
    // The same, but goes on with a save of that file which is under way: Close then saves all blocks in one
    // step.
    void RewriteBlock(const char* path, const char* block);

    // One key line each. Without a rewrite under way they log a warning and write nothing.
    void WriteInt(int value, const char* key);
    // Six decimals.
    void WriteFloat(float value, const char* key);
    // In double quotes. A double quote inside becomes an apostrophe and a control byte a blank, so that any
    // text reads back.
    void WriteString(const char* value, const char* key);

    // Takes over the old block's line of a key as it stands, although the reader can make nothing of it.
    // False when there is no such line, or within a nested block.
    bool KeepLine(const char* key);

    // Opens a nested block.
    void OpenBlock(const char* name);
    // Closes the nested blocks from the innermost up to and including `name`; a name that is not open does
    // nothing.
    void CloseBlock(const char* name);

    // Finishes the rewrite and puts the new file in the place of the old one.
    void Close();

private:
    enum class State { Closed, Open, Refused };

    bool Ready() const;
    bool MayReplace() const;
    void BeginBlock(const char* block);
    void FinishBlock();
    void WriteValue(const char* key, std::string_view value);
    void CloseInnermost();
    int UnreadableLines();
    bool KeepOldFile(const char* why) const;

    State state = State::Closed;
    platform::FolderLock lock;
    platform::FileReplacement output;
    std::string text; // the new file's content so far
    std::vector<std::string> openBlocks;
    ConfigFile input;     // what the block under way is taken from
    std::string original; // the file as it was read
    std::string path;
    std::string target; // what the path names behind all links
    std::string blockName;
    bool blockFound = false;
    int linesKept = 0;
    bool nothingLost = true; // whether all that the new file lacks of the old one stays in a copy of it
};

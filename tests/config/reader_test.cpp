// The block reader: what is found, what it reads as, and where the position stands afterwards.
#include "config/config_reader.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <ctime>
#include <sys/stat.h>

namespace {

TEST(Reader, ReadsEveryWayToWriteAKeyLine) {
    const struct {
        const char* line;
        int whole;
        float decimal;
        const char* text;
    } cases[] = {
        // bytes before the number are skipped, lines without a value, keys behind inner blocks
        {"\t KEY = 640", 640, 640, ""},
        {"key=480", 480, 480, ""},
        {"key 32", 32, 32, ""},
        {"key = \"Two words\" 3", 3, 3, "Two words"},
        {"key = \"open", 0, 0, "open"},
        {"key = .5", 5, 5, ""},
        {"key = x12 34", 12, 12, ""},
        {"key = -", 0, 0, ""},
        {"key = 0.5e1", 0, 5, ""},
        {"key=\nkeys = 5\nkey = 7\nkey = 8", 7, 7, ""},
        {"ke = 5\n<in>\nkey = 6\n</in>", 6, 6, ""},
        {"<in>\n</in>\nkey = 6", 0, 0, ""},
        {"key\t5", 0, 0, ""},
        {"key = -99999999999999999999", INT_MIN, -1e20F, ""},
        {"key = 99999999999999999999e99", INT_MAX, FLT_MAX, ""},
        {"key = +inf", 0, 0, ""},
    };
    for (const auto& [line, whole, decimal, text] : cases) {
        ConfigFile file = ConfigFile::FromMemory("\xEF\xBB\xBF<a>\n" + std::string(line) + "\n</a>\n");
        ASSERT_TRUE(INI_FindBlock("A", &file)) << "behind the mark of some editors";
        EXPECT_EQ(INI_ReadInt("key", &file), whole) << line;
        EXPECT_EQ(INI_ReadFloat("Key", &file), decimal) << line;
        EXPECT_STREQ(INI_ReadString("key", &file), text) << line;
    }
}

TEST(Reader, PositionsAfterSearches) {
    ConfigFile file =
        ConfigFile::FromMemory("<outer> text\n <outer>\t \nkey = 1\n<item>\nkey = 2\n</item>\r\n<item>\r\n"
                               "</item> text\n</ITEM>\n</outer>\n<item>\n</item>\n");
    ASSERT_TRUE(INI_FindBlock("outer", &file)) << "a tag stands alone on its line";
    const std::size_t start = file.Position();
    EXPECT_FALSE(INI_FindNextBlock("missing", &file));
    EXPECT_STREQ(lineBuffer.data(), "</item>") << "the line that ended the search";
    EXPECT_FALSE(INI_FindKey("missing", &file));
    EXPECT_TRUE(INI_FindKey("key", &file));
    EXPECT_STREQ(lineBuffer.data(), "key = 1");
    EXPECT_EQ(file.Position(), start);
    int items = 0;
    for (; INI_FindNextBlock("item", &file); ++items)
        EXPECT_TRUE(INI_SkipBlock("item", &file));
    EXPECT_EQ(items, 2) << "the list ends with the outer block";
    EXPECT_TRUE(INI_SkipBlock("outer", &file) && !INI_SkipBlock("outer", &file));
    EXPECT_FALSE(INI_FindNextBlock("item", &file)) << "at the end every forward search fails";
    EXPECT_TRUE(INI_FindBlock("outer", &file)) << "a search from the start comes back";
}

TEST(Reader, LinesOfAListAndOddBytes) {
    ConfigFile file = ConfigFile::FromMemory(
        "<in>\r\n;first\r\na  b\r\n  ; behind blanks\r\n\r\nc d\r\n</in>\r\nafter\n   \n" +
        std::string("one\0two\n", 8) + std::string(600, 'x') + "\n\x80\xff z\x80\n\x01\nlast");
    ASSERT_TRUE(INI_FindBlock("in", &file));
    EXPECT_STREQ(INI_NextLine(&file), "a  b");
    // A closing tag and a line of only blanks end a list; a NUL ends a line, and a long one is cut.
    const std::string cut(511, 'x');
    for (const char* line :
         {"c d", "", "after", "", "one", "two", cut.c_str(), "\x80\xff z", "\x01", "last"}) {
        EXPECT_FALSE(file.AtEnd()) << line;
        EXPECT_STREQ(INI_ReadLine(&file), line);
    }
    EXPECT_TRUE(file.AtEnd());
    char text[] = " \t a\x80 \r\x7f";
    INI_TrimLeft(text);
    INI_TrimRight(text);
    EXPECT_STREQ(text, "a");
}

// What a power cut leaves: each NUL is a line of its own.
TEST(Reader, AFailedSearchTakesTimeByTheByte) {
    const auto cost = [](std::size_t size) {
        ConfigFile file = ConfigFile::FromMemory(std::string(size, '\0') + std::string(size, '\n'));
        const std::clock_t start = std::clock();
        EXPECT_FALSE(INI_FindBlock("a", &file));
        return static_cast<double>(std::clock() - start);
    };
    EXPECT_LT(cost(1000000), 40 * cost(100000) + CLOCKS_PER_SEC / 10.0);
}

TEST(Reader, WithoutAFileThereIsNoBlock) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const char* name : {"/", "pipe", "no/such/file.cfg"}) {
        ConfigFile closed(name);
        EXPECT_EQ(closed.IsMissing(), *name == 'n') << name;
        for (ConfigFile* file : {&closed, static_cast<ConfigFile*>(nullptr)}) {
            EXPECT_FALSE(INI_FindBlock("a", file) || INI_FindNextBlock("a", file) ||
                         INI_SkipBlock("a", file));
            EXPECT_STREQ(INI_ReadString("a", file), "");
            EXPECT_STREQ(INI_ReadLine(file), "");
        }
    }
}

} // namespace

// Records: what a table reads and writes, and that whatever it cannot explain is named and never overwritten.
#include "config/record.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

struct Lamp {
    std::int32_t watts = 9;
    std::uint8_t place = 9;
    bool lit = true;
    float dim = 9;
    float glow = 9;
    std::string name = "old";
};

constexpr RecordKey<Lamp> LampKeys[] = {{"watts", &Lamp::watts},
                                        {"place", &Lamp::place},
                                        {"lit", &Lamp::lit},
                                        {"dim", &Lamp::dim},
                                        {"name", &Lamp::name, IfMissing::Zero, 5},
                                        {"glow", &Lamp::glow, IfMissing::Keep}};
constexpr RecordTable<Lamp> LampTable = {"lamp", LampKeys};

Lamp Read(const std::string& lines, UnreadKeys* unread = nullptr) {
    ConfigFile file = ConfigFile::FromMemory("<lamp>\n" + lines + "\n</lamp>\nwatts = 1\n", "lamp.cfg");
    Lamp lamp;
    EXPECT_TRUE(INI_FindBlock("lamp", &file));
    const std::size_t start = file.Position();
    ReadRecord(LampTable, lamp, &file, unread);
    EXPECT_EQ(file.Position(), start);
    return lamp;
}

TEST(Record, ReadsEachKindOnceAndNamesWhatItCannotUse) {
    const TemporaryFolder folder;
    const Lamp lamp = Read("WATTS = -3\nplace=258\nlit 2\ndim = 0.5\n  ; note\nname = \"abcdefg\"\n"
                           "<part>\nstrange = 1\ndim = 2\nglow = 3\n</part>\nwatts = 4");
    EXPECT_TRUE(lamp.watts == -3 && lamp.place == 2 && lamp.lit && lamp.dim == 0.5F && lamp.name == "abcde" &&
                lamp.glow == 3.0F);
    EXPECT_EQ(ReadLog(), "");
    for (const auto& [line, warning] :
         {std::pair{"wats = 4", "<lamp> has no key of the name wats"},
          {"watts\t4", "watts cannot be read: a tab stands behind it, where a blank or = must"},
          {"watts=", "watts cannot be read: it has no value"},
          {"watts = none", "watts cannot be read: it has no number"},
          {"name = Ana", "name cannot be read: its text is not in double quotes"},
          {"dim = 0,5", "dim is cut off at its comma: decimal numbers use a point"}}) {
        std::remove("log.txt");
        const Lamp left = Read("lit = 1\n\n" + std::string(line));
        EXPECT_TRUE(left.watts == 0 && left.place == 0 && left.lit && left.dim == 0 && left.name.empty() &&
                    left.glow == 9.0F);
        EXPECT_EQ(ReadLog(), "ReadRecord [WARNING] - lamp.cfg:4: " + std::string(warning) + "\n");
    }
    std::string nonsense;
    for (int line = 0; line < 500; ++line)
        nonsense += "x = 1\n";
    Read(nonsense);
    EXPECT_LT(ReadLog().size(), 10000U) << "no file fills the log";
}

TEST(Record, ASaveLeavesLinesAloneThatCouldNotBeRead) {
    const TemporaryFolder folder;
    const std::string old = "<lamp>\n\tWatts\t40\n  dim\t0.5\n  name = Ana\n  place = 7\n</lamp>\n";
    WriteFile("config.cfg", old);
    ConfigFile file("config.cfg");
    ASSERT_TRUE(INI_FindBlock("lamp", &file));
    Lamp lamp;
    UnreadKeys unread;
    ReadRecord(LampTable, lamp, &file, &unread);
    lamp.watts = 60; // what the program takes in its place
    SettleUnread(LampTable, lamp, unread);
    lamp.dim = 0.25F; // what the player sets
    for (int saves = 0; saves < 2; ++saves) {
        {
            INI_Writer writer;
            writer.WriteExistantFile("config.cfg", "lamp");
            WriteRecord(LampTable, lamp, writer, &unread);
        }
        EXPECT_EQ(ReadFile("config.cfg"), "<lamp>\n\tWatts\t40\n  place = 7\n  lit = 0\n  dim = 0.250000\n"
                                          "  name = Ana\n  glow = 9.000000\n</lamp>\n");
        EXPECT_EQ(ReadFile("config.cfg.bak"), old) << "a line was replaced at first, and nothing lost since";
    }
}

} // namespace

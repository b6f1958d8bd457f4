// Effect files for tests, written into the working directory.
#pragma once

#include "particles/engine.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <vector>

// The text of an emitter file: a texture, two key frames, and plain keys; `keys`, words such as "form=2",
// replace or add some.
inline std::string EmitterText(const std::string& keys = "", const std::string& texture = "dot.png",
                               const std::string& framenum = "1") {
    std::istringstream words("particleNum=8 emitnum=8 emittime=100 framespeed=100 life=400 form=1 shape=7 "
                             "sfactor=770 dfactor=1 dietype=1 die=2 dirx=0.001 acceleration=1 " +
                             keys);
    std::map<std::string, std::string> values;
    for (std::string word; words >> word;)
        values[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    std::string text =
        "<TEmittor>\n<texture>\nfilename = \"" + texture + "\"\nframenum = " + framenum + "\n</texture>\n";
    text += "<Frames>\n<Frame>\nred = 1\ngreen = 0.5\nalpha = 1\nsize = 0.25\nrandx = 0.001\n</Frame>\n";
    text += "<Frame>\nblue = 1\nalpha = 0.5\nrota = 90\nsize = 0.5\n</Frame>\n</Frames>\n";
    for (const auto& [key, value] : values)
        text += key + " = " + value + "\n";
    return text + "</TEmittor>\n";
}

// An effect (blocks "TEmittor" with "emittor") or a list of effects ("TEffect" with "name").
inline std::string ListText(const std::string& block, const std::string& key,
                            const std::vector<std::string>& names) {
    const std::string all = block == "TEffect" ? "Particles" : "TEmittors";
    std::string text = "<" + all + ">\n";
    for (const std::string& name : names)
        text += "<" + block + ">\n" + key + " = \"" + name + "\"\n</" + block + ">\n";
    return text + "</" + all + ">\n";
}

// Has the engine load one effect of emitters with these texts.
inline void LoadEffect(QEV_PEngine& engine, const std::vector<std::string>& emitterTexts) {
    std::vector<std::string> names;
    for (const std::string& text : emitterTexts) {
        names.push_back("emitter" + std::to_string(names.size()) + ".txt");
        WriteFile(names.back(), text);
    }
    WriteFile("effect.txt", ListText("TEmittor", "emittor", names));
    WriteFile("list.txt", ListText("TEffect", "name", {"effect.txt"}));
    engine.Release();
    EXPECT_TRUE(engine.Load("list.txt"));
}

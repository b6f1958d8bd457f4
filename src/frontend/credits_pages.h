// The pages that scroll up the screen in the credits view: who made the game, and the best scores.
// Rests on the font and on the table of scores.
#pragma once

#include "rules/high_scores.h"

#include <string>
#include <vector>

// A title and the people under it.
struct CreditsGroup {
    std::string title;
    std::vector<std::string> names;
};

// Where a line stands and how opaque it is.
struct PageLine {
    int y;       // on the font's 640 x 480 screen
    float alpha; // below 0 off the screen
};

// A line with base height `base` when `progress` (0 to 1) of the page's run has passed: pages move up 750
// units in a run, and lines are brightest in the middle of the screen.
PageLine ScrolledLine(int base, double progress);

class CreditsPages {
public:
    void Add(CreditsGroup group) { groups.push_back(std::move(group)); }
    void Clear() { groups.clear(); }

    // Draw one page at a progress of its run.
    void DrawCredits(double progress) const;
    static void DrawHighScores(const HighScoreTable& table, double progress);

private:
    std::vector<CreditsGroup> groups;
};

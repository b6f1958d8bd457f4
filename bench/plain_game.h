// The game's rules a second time, written as plainly as can be: a grid of characters, whole numbers, shapes
// turned by arithmetic. Shares nothing with the game.
#pragma once

#include <algorithm>
#include <cstring>
#include <utility>

struct PlainGame {
    explicit PlainGame(int (*dealFrom)()) : deal(dealFrom) { NewGame(); }

    void NewGame() {
        std::memset(grid, '.', sizeof grid);
        level = 1;
        score = lines = fall = repeat = 0;
        over = false;
        next = deal();
        NextPiece();
    }

    // held: '-' nothing, 'L' left, 'R' right, 'S' soft drop, 'D' drop
    void PressLeft() { Press('L', 200); }
    void PressRight() { Press('R', 200); }
    void PressSoftDrop() { Press('S', repeat); }
    void PressDrop() { held = 'D'; }
    void Release(char key) {
        if (held != key) return;
        held = '-';
        if (key != 'S') repeat = 0;
    }

    void Update(int delta) {
        if (over) return;
        fall += level * delta;
        repeat += delta;
        if ((held == 'L' || held == 'R') && repeat >= 200) {
            Move(held == 'L' ? -1 : 1);
            repeat = 0;
        }
        if (held == 'S') fall += 4 * delta;
        if (held == 'D') fall += 1000;
        if (turnAsked) Turn();
        turnAsked = false;
        if (fall <= 1000) return;
        StepDown();
        ClearRows();
        fall = 0;
    }

    void NextPiece() {
        // Offsets from the pivot of the upright pieces, and the row their pivot starts in.
        static const int shapes[7][8] = {{0, 1, 0, 0, 0, -1, 0, -2},  {-1, 0, 0, 0, 1, 0, 0, -1},
                                         {-1, 0, 0, 0, -1, 1, 0, 1},  {0, 1, 0, 0, 0, -1, 1, -1},
                                         {-1, -1, 0, -1, 0, 0, 0, 1}, {-1, 0, 0, 0, 0, 1, 1, 1},
                                         {-1, 0, 0, 0, 0, -1, 1, -1}};
        static const int rows[7] = {23, 21, 20, 21, 21, 20, 20};
        type = next;
        held = '-';
        pivotX = 5;
        pivotY = rows[type];
        for (int i = 0; i < 4; i++) {
            offsetX[i] = shapes[type][2 * i];
            offsetY[i] = shapes[type][2 * i + 1];
            x[i] = pivotX + offsetX[i];
            y[i] = pivotY + offsetY[i] + (type == 6); // the Z starts one row above where its pivot says
        }
        next = deal();
    }

    bool Filled(int column, int row) const { return row < 20 && grid[row][column] != '.'; }

    void Move(int dx) {
        for (int i = 0; i < 4; i++)
            if (x[i] + dx < 0 || x[i] + dx > 9 || Filled(x[i] + dx, y[i])) return;
        for (int i = 0; i < 4; i++)
            x[i] += dx;
        pivotX += dx;
    }

    void Turn() {
        if (type == 2) return;
        int newX[4];
        int newY[4];
        for (int i = 0; i < 4; i++) {
            newX[i] = pivotX + offsetY[i]; // a quarter turn clockwise takes (x, y) to (y, -x)
            newY[i] = pivotY - offsetX[i];
        }
        const auto [left, right] = std::minmax_element(newX, newX + 4);
        const int push = std::max(-*left, 0) + std::min(9 - *right, 0);
        for (int i = 0; i < 4; i++) {
            newX[i] += push;
            if (newY[i] < 0 || Filled(newX[i], newY[i])) return;
        }
        for (int i = 0; i < 4; i++) {
            x[i] = newX[i];
            y[i] = newY[i];
            std::swap(offsetX[i], offsetY[i]);
            offsetY[i] *= -1;
        }
    }

    void StepDown() {
        bool blocked = false;
        for (int i = 0; i < 4; i++)
            blocked |= y[i] <= 20 && (y[i] == 0 || Filled(x[i], y[i] - 1));
        pivotY -= !blocked;
        for (int i = 0; i < 4; i++) {
            y[i] -= !blocked;
            over |= blocked && y[i] >= 20;
            if (blocked && !over) grid[y[i]][x[i]] = static_cast<char>('0' + type);
        }
        if (!blocked || over) return;
        landings++;
        NextPiece();
    }

    void ClearRows() {
        int count = 0;
        for (int row = 0; row < 20; row++) {
            if (std::memchr(grid[row], '.', 10)) continue;
            count++;
            std::memmove(grid[row], grid[row + 1], sizeof grid[0] * static_cast<std::size_t>(19 - row));
            std::memset(grid[19], '.', 10);
            row--;
        }
        if (count == 0) return;
        static const int points[5] = {0, 40, 100, 300, 1200};
        score += (level + 1) * points[count];
        lines += count;
        if (lines < 10) return;
        lines = 0;
        level++;
    }

    char grid[20][10];
    int x[4] = {}; // the falling piece's blocks
    int y[4] = {};
    int type = 0;
    int next = 0;
    int level = 1;
    int score = 0;
    int lines = 0;
    int landings = 0;
    bool turnAsked = false;
    bool over = false;

private:
    void Press(char key, int newRepeat) {
        if (held == 'D') return;
        held = key;
        repeat = newRepeat;
    }

    int (*deal)();
    int pivotX = 0;
    int pivotY = 0;
    int offsetX[4] = {};
    int offsetY[4] = {};
    int fall = 0;
    int repeat = 0;
    char held = '-';
};

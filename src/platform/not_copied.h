// The base of what owns something that there must be once. Rests on nothing.
#pragma once

class NotCopied {
public:
    NotCopied(const NotCopied&) = delete;
    NotCopied& operator=(const NotCopied&) = delete;

protected:
    constexpr NotCopied() = default;
    ~NotCopied() = default;
};

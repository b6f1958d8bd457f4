// Lets one system call of a piece of work fail, or the program die before it: every one in turn shows what a
// full disk, a crash or a pulled plug can do at any moment.
#pragma once

// In place of an error number: the program ends before the call.
inline constexpr int Dies = 0;

// Does the work in a copy of the program whose system call number `call`, counted from 1, fails with `error`.
// Calls for memory are left out. False when the work makes fewer calls.
bool DoWithFailingCall(void (*work)(), int call, int error);

// Counts what a program asks of the heap through operator new, for tests that hold code to asking nothing.
// The program that calls Allocations gets the counting operators.
#pragma once

// Calls of operator new since the program's start.
long Allocations();
// Of these, the ones whose memory has not been given back yet.
long AllocationsHeld();

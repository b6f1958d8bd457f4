// Counts what a program asks of the heap through operator new, for tests that hold code to asking nothing.
// The program that calls one of these gets the counting operators.
#pragma once

// Calls of operator new since the program's start.
long Allocations();
// Bytes that have not been given back yet, as the heap rounds them.
long BytesHeld();

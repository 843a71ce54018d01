// The search's innermost code is compiled twice on processors of the x86-64 family: once for all of
// them, and once for those with an instruction that counts the bits of a word. The search chooses
// when it runs, so one binary is safe everywhere. Each of the two lives in a namespace of its own;
// otherwise the linker could take a function of one for the same function of the other.
#pragma once

// Geometry, which both use, counts no bits in any function of its own. What is built only once, the
// start-up of the tables among it, uses the generic one.
#ifndef TALUREX_KERNEL
#define TALUREX_KERNEL GenericKernel
#endif

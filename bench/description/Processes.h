// This process and those that it started, directly or not.
#pragma once

// Memory in MB, each shared page by its share.
double MemoryOfAll();
// Seconds of processor time so far.
double ProcessorTimeOfAll();

#pragma once

namespace modStart {
// The entry point: checks, windows, restoring, the command line, then the event loop.
int Sub_Main(int argc, char** argv);
} // namespace modStart

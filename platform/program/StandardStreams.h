// Bytes in and out of a program, the same on every system.
#pragma once

namespace platform {

// Makes standard input, output and error carry bytes as they are. Windows: no translation of line ends and no end at
// 0x1A, and a console shows output as UTF-8 until the program ends. POSIX: nothing to do. Call it first in main.
void PrepareStandardStreams();

}  // namespace platform

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "platform/program/StandardStreams.h"

namespace platform {

namespace {

UINT g_codePageBefore = 0;

void ShowUtf8OnConsole() {
  g_codePageBefore = GetConsoleOutputCP();  // 0 without a console
  if (g_codePageBefore != 0 && SetConsoleOutputCP(CP_UTF8) != FALSE) {
    // The console outlives the program, and other programs in it count on their code page.
    std::atexit([] { SetConsoleOutputCP(g_codePageBefore); });
  }
}

}  // namespace

void PrepareStandardStreams() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) {
    // Fails for a stream that is not there; then there is nothing to translate either.
    _setmode(_fileno(stream), _O_BINARY);
  }
  ShowUtf8OnConsole();
}

}  // namespace platform

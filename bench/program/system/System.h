#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/Paths.h"

namespace kxbench {

/// File names are UTF-8 throughout the program.
using shorttest::PathFromUtf8;
using shorttest::Utf8FromPath;

/// The command line's arguments without the program's name, UTF-8.
std::vector<std::string> Utf8Arguments(int argc, char** argv);

/// The folder that the running program's file lies in. Throws Failure when the system does not tell.
std::filesystem::path ProgramFolder();

#ifdef _WIN32
/// The file of a library in memory, by its handle; null for the program. Throws Failure when the system does
/// not tell.
std::filesystem::path LoadedFile(void* library);
#endif

/// The file of the shared library `fileName` ("name.dll"); none when it is not in memory.
std::optional<std::filesystem::path> LoadedLibrary(const std::string& fileName);

/// The name under which the computer is known, UTF-8; empty when the system does not tell.
std::string ComputerName();

/// Sets a variable of this process's environment, for libraries loaded later too.
void SetEnvironment(const std::string& name, const std::string& value);

/// Lets libraries that are loaded from now on find the libraries they need in the folder `first` before the
/// user's search path, and in `last` after it. What lies beside a library goes before both. For systems on
/// which a library does not say itself where to look.
void AddLibraryFolders(const std::filesystem::path& first, const std::filesystem::path& last);

/// Writes all of `text` to standard output, however long its reader takes; gives 0 or the system's error
/// number.
int WriteToOutput(std::string_view text);

/// True when standard output is a terminal that shows colours, and the user did not refuse them (NO_COLOR).
bool OutputShowsColours();

/// Opens those of standard input, output and error that the program was started without, so that no other
/// file gets their places; reading and writing there still fail. The first thing to call.
void OpenStandardStreams();

/// Lets the console show the UTF-8 that the program writes, where it needs to be told.
void PrepareConsole();

/// File name of a shared library as this system calls it: "libname.so" or "name.so", "name.dll".
enum class LibraryPrefix { Lib, None };
std::string LibraryFileName(const std::string& name, LibraryPrefix prefix);

}  // namespace kxbench

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace host {

/// What this platform says about the user and about where the library is. Empty where it says nothing.

/// An environment variable; empty when it is not set.
std::wstring ReadEnvironment(std::wstring_view name);
/// The folder for the user's data of all programs.
std::filesystem::path UserDataRoot();
/// The folder for the user's configuration of all programs.
std::filesystem::path UserConfigRoot();
/// The file of the shared library, or of the program that the library is linked into.
std::filesystem::path ModulePath();

}  // namespace host

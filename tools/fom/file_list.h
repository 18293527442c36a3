#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/base/error.h"

namespace command {

/// The drawings that a command line names.
struct FileList {
    /// In the order of the command line, those of a folder by their paths. Each file once, whatever leads to
    /// it.
    std::vector<std::filesystem::path> files;
    /// Of each file, as documents call it: below its folder, or the file's own name.
    std::vector<std::string> names;
    /// What could not be looked at, and folders without drawings.
    std::vector<host::Error> errors;
    /// Drawings in folders that are compressed and therefore left out.
    std::size_t compressed = 0;
};

/// Files count whatever they are called; folders give the ".svg" files in them and in their subfolders. Links
/// on the command line are followed. Links in folders are followed when they lead to a file within the given
/// paths that was not met yet; links to folders are not.
FileList ListDrawings(const std::vector<std::filesystem::path>& paths);

}  // namespace command

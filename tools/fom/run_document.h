#pragma once

#include <filesystem>

#include "fom/document_file.h"
#include "fom/document_inspect.h"
#include "fom/options.h"

namespace command {

/// What the subcommands about one document file are given.
struct DocumentRequest {
    std::filesystem::path path;
    std::filesystem::path output;
    DocumentVersion version = DocumentVersion::Current;
    InspectChoice choice;
    bool json = false;
};

// All return the exit code.
int RunInspect(const DocumentRequest& request, Console& console);
int RunVerify(const DocumentRequest& request, Console& console);
int RunStats(const DocumentRequest& request, Console& console);
int RunConvert(const DocumentRequest& request, Console& console);
int RunRecover(const DocumentRequest& request, Console& console);

}  // namespace command

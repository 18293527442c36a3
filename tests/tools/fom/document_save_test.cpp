#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fom/document_file.h"

#include "support/alloc_faults.h"
#include "support/faulty_stream.h"
#include "support/temp_folder.h"
#include "tools/fom/command_run.h"
#include "tools/fom/document_samples.h"

namespace {

using namespace testing_support;

class DocumentSave : public DocumentTest {};

/// While it lives no file of this process grows beyond so many bytes: writing fails as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

bool Save(const command::PaintDocument& document, const std::filesystem::path& path, host::Error& error) {
    return command::SaveDocument(document, path, command::DocumentVersion::Current, error);
}

TEST_F(DocumentSave, AFailedSaveLeavesTheOldFileAndNothingElse) {
    const TempFolder folder;
    const std::filesystem::path path = folder / "art.fomdoc";
    WriteText(path, "old");
    const command::PaintDocument document = SmallDocument();
    const std::size_t size = Written(document).size();
    for (std::size_t room = 0; room < size; ++room) {
        host::Error error;
        {
            const FullDisk disk(room);
            EXPECT_FALSE(Save(document, path, error));
        }
        ASSERT_EQ(ReadText(path), "old") << room;
        ASSERT_EQ(folder.Count(), 1u) << room;
        EXPECT_EQ(error.what, path.string());
        EXPECT_FALSE(error.reason.empty());
    }
    host::Error error;
    const auto unchanged = [&] {
        EXPECT_EQ(ReadText(path), "old");
        EXPECT_EQ(folder.Count(), 1u);
    };
    EXPECT_GT(FailEachAllocation([&] { Save(document, path, error); }, unchanged), 0u);
    EXPECT_EQ(ReadText(path).size(), size);
    EXPECT_FALSE(Save(document, folder / "absent" / "art.fomdoc", error));
}

TEST_F(DocumentSave, NoticesEveryShortWrite) {
    const command::PaintDocument document = SmallDocument();
    MemoryFileStream whole;
    FaultyStream counting(whole);
    host::Error error;
    ASSERT_TRUE(command::WriteDocument(document, counting, command::DocumentVersion::Current, error));
    for (std::uint64_t call = 1; call <= counting.GetCalls(); ++call) {
        MemoryFileStream part;
        FaultyStream faulty(part);
        faulty.FailCall(call);
        EXPECT_FALSE(command::WriteDocument(document, faulty, command::DocumentVersion::Current, error))
            << call;
        EXPECT_EQ(error.reason, "cannot be written");
    }
}

TEST_F(DocumentSave, RefusesWhatCouldNotBeLoaded) {
    const TempFolder folder;
    command::PaintDocument document = SmallDocument();
    const std::filesystem::path path = folder / "art.fomdoc";
    host::Error error;
    document.AddShape(false, document.Pool());
    EXPECT_FALSE(Save(document, path, error));
    EXPECT_EQ(error.reason, "there are shapes of no drawing");
    command::SourceDrawing drawing;
    drawing.shapes = 1;
    drawing.name = "../a.svg";
    document.AddDrawing(drawing);
    EXPECT_FALSE(Save(document, path, error));
    EXPECT_EQ(error.reason, "not a name of a drawing: '../a.svg'");
    command::PaintDocument twins = SmallDocument();
    drawing.name = "a.svg";
    drawing.shapes = 0;
    twins.AddDrawing(drawing);
    EXPECT_FALSE(Save(twins, path, error));
    EXPECT_EQ(error.reason, "two drawings are called 'a.svg'");
    EXPECT_EQ(folder.Count(), 0u);
    EXPECT_FALSE(command::LoadDocument(path, error));
    EXPECT_EQ(error.reason, "no such file");
    EXPECT_FALSE(command::LoadDocument(folder.Path(), error));
    EXPECT_EQ(error.reason, "not a regular file");
}

}  // namespace

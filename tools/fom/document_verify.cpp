#include "fom/document_verify.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "fom/document_loader.h"
#include "fom/document_walk.h"
#include "fom/grouped.h"
#include "fom/stored_entry.h"

namespace command {
namespace {

/// The kinds of entries, each with the pool in which equal ones are found.
template <class Entry, class List>
class EntryCheck {
public:
    EntryCheck(const char* what, DocumentVersion version) : m_what(what), m_version(version) {}

    /// The reason why a record is wrong; empty when it is not.
    std::string Check(const StoredEntry& stored) {
        bool isWhole = false;
        auto entry = ReadRecord<Entry>(stored.record, m_version, isWhole);
        m_offsets.push_back(stored.offset);
        if (!isWhole) return Name(stored.number) + " is damaged";
        std::vector<std::uint8_t> again;
        const bool isStored = AppendRecord(*entry, m_version, again);
        const Entry* pooled = m_pool->AddOrGetDuplicate(entry.get(), nullptr);
        static_cast<void>(entry.release());
        const auto [known, isNew] = m_known.try_emplace(pooled, stored.number);
        if (!isNew) return Name(stored.number) + " is equal to " + Name(known->second);
        if (!isStored || !std::equal(again.begin(), again.end(), stored.record.begin(), stored.record.end()))
            return Name(stored.number) + " is written in another way than it is stored";
        return {};
    }
    /// Number from 1, 0 for none, as shapes have it.
    void Use(std::uint32_t reference) {
        if (reference > m_used.size()) m_used.resize(std::min<std::size_t>(reference, m_offsets.size()));
        if (reference != 0 && reference <= m_used.size()) m_used[reference - 1] = true;
    }
    void FindUnused(std::vector<host::Error>& findings) const {
        for (std::size_t i = 0; i < m_offsets.size(); ++i)
            if (i >= m_used.size() || !m_used[i])
                findings.push_back(DocumentFault(m_offsets[i], "no shape has " + Name(i)));
    }

private:
    std::string Name(std::uint64_t number) const { return std::string(m_what) + " " + Grouped(number); }

    const char* m_what;
    DocumentVersion m_version;
    std::shared_ptr<List> m_pool = std::make_shared<List>();
    std::unordered_map<const Entry*, std::uint32_t> m_known;
    std::vector<std::uint64_t> m_offsets;
    std::vector<bool> m_used;
};

class Verifier {
public:
    explicit Verifier(DocumentVersion version)
        : m_loader(version), m_fills("fill", version), m_outlines("outline", version) {
        m_visitor.entry = [this](const StoredEntry& stored) {
            Note(stored.offset, stored.isFill ? m_fills.Check(stored) : m_outlines.Check(stored));
        };
        m_visitor.shapes = [this](const StoredShapes& stored) { CheckShapes(stored); };
    }

    void Note(host::Error fault) { m_findings.push_back(std::move(fault)); }
    void Check(const Block& block) {
        host::Error fault;
        BlockRun run;
        const std::size_t before = m_findings.size();
        WalkBlock(block, m_visitor, run, fault);
        if (m_loader.Take(block, fault)) return;
        m_loader.Lose(block.payload.size() + kBlockFrame);
        // What is wrong with a record was said already.
        const auto isSaid = [&](const host::Error& said) {
            return said.offset >= fault.offset && said.offset <= fault.offset + 4;
        };
        if (std::none_of(m_findings.begin() + static_cast<std::ptrdiff_t>(before), m_findings.end(), isSaid))
            Note(std::move(fault));
    }
    void Lose(const Block& block) { m_loader.Lose(block.payload.size() + kBlockFrame); }
    bool IsAtEnd() const noexcept { return m_loader.IsAtEnd(); }
    std::vector<host::Error> Finish() {
        if (m_findings.empty()) {
            m_fills.FindUnused(m_findings);
            m_outlines.FindUnused(m_findings);
        }
        return std::move(m_findings);
    }

private:
    void Note(std::uint64_t offset, std::string reason) {
        if (!reason.empty()) Note(DocumentFault(offset, std::move(reason)));
    }

    void CheckShapes(const StoredShapes& stored) {
        std::vector<bool> used(stored.MatrixCount());
        const auto use = [&](std::uint32_t fill, std::uint32_t matrix) {
            m_fills.Use(fill);
            if (matrix != 0 && matrix <= used.size()) used[matrix - 1] = true;
        };
        for (std::uint32_t i = 0; i < stored.run.count; ++i) {
            const StoredShape shape = stored.Shape(i);
            use(shape.fill, shape.matrix);
            m_outlines.Use(shape.outline);
        }
        for (std::uint32_t i = 0; i < stored.StrokeFillCount(); ++i)
            use(stored.StrokeFill(i).fill, stored.StrokeFill(i).matrix);
        CheckMatrices(stored, used);
    }

    void CheckMatrices(const StoredShapes& stored, const std::vector<bool>& used) {
        const std::uint64_t start = stored.offset - stored.matrices.size();
        std::set<MatrixBytes> known{StoredMatrix({})};
        for (std::uint32_t i = 0; i < stored.MatrixCount(); ++i) {
            const bool isNew = known.insert(StoredMatrix(stored.Matrix(i + 1))).second;
            if (isNew && used[i]) continue;
            Note(start + std::uint64_t{i} * kMatrixSize,
                 "matrix " + Grouped(i) + " of the block is " +
                     (isNew ? "not used" : "the identity, or there twice"));
        }
    }

    DocumentLoader m_loader;
    EntryCheck<WRefCountFill, WRCFillList> m_fills;
    EntryCheck<WRefCountOutline, WRCOutlineList> m_outlines;
    BlockVisitor m_visitor;
    std::vector<host::Error> m_findings;
};

}  // namespace

std::vector<host::Error> VerifyDocument(AbstractFileStream& stream) {
    BlockReader reader(stream);
    host::Error fault;
    const std::optional<DocumentVersion> version = reader.ReadHead(fault);
    if (!version) return {fault};
    Verifier verifier(*version);
    Block block;
    for (auto result = BlockReader::Result::Block;
         result != BlockReader::Result::Broken && !verifier.IsAtEnd();) {
        result = reader.Next(block, fault);
        if (result == BlockReader::Result::Block) {
            verifier.Check(block);
            continue;
        }
        verifier.Note(fault);
        if (result == BlockReader::Result::Damaged) verifier.Lose(block);
    }
    if (verifier.IsAtEnd() && reader.Remaining() != 0)
        verifier.Note(DocumentFault(reader.Offset(), "something follows the end block"));
    return verifier.Finish();
}

}  // namespace command

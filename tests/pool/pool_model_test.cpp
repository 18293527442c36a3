#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

#include "pool/intern_index.h"
#include "pool_kinds.h"

namespace {

/// A pool beside a std::set and a count of what is held, changed alike.
template <class Kind>
class Model {
    using Entry = typename Kind::Entry;

public:
    void Add(unsigned value) {
        auto* entry = Kind::New(value);
        const auto found = m_set.find(entry);
        const Entry* expected = found != m_set.end() ? *found : entry;
        AddExpecting(entry, expected);
    }
    void AddExpecting(Entry* entry, const Entry* expected) {
        const Entry* pooled = m_list->AddOrGetDuplicate(entry, nullptr);
        ASSERT_EQ(pooled, expected);
        m_set.insert(pooled);
        m_held.push_back(pooled);
        ++m_counts[pooled];
        ASSERT_EQ(pooled->GetReference(), m_counts[pooled]);
    }
    void Remove(std::size_t at) {
        const Entry* entry = TakeHeld(at);
        const bool isLast = Forget(entry);
        ASSERT_TRUE(m_list->RemoveInstance(entry));
        ASSERT_TRUE(isLast || entry->GetReference() == m_counts[entry]);
    }
    /// Up to `many` at once, the same entry perhaps several times, and a null.
    void RemoveMany(std::size_t many) {
        std::vector<const Entry*> entries{nullptr};
        while (!m_held.empty() && entries.size() <= many) {
            entries.push_back(TakeHeld(m_held.size() / 2));
            Forget(entries.back());
        }
        ASSERT_EQ(m_list->RemoveInstances(entries), entries.size() - 1);
        for (const auto& [entry, count] : m_counts)
            ASSERT_EQ(entry->GetReference(), count);
    }
    /// Takes one out, and puts it back or throws it away.
    void Extract(std::size_t at, bool putBack) {
        const Entry* entry = TakeHeld(at);
        const bool isLast = Forget(entry);
        std::unique_ptr<Entry> taken(m_list->ExtractInstanceForEditing(entry));
        ASSERT_TRUE(taken);
        ASSERT_EQ(taken.get() == entry, isLast);
        ASSERT_EQ(taken->GetReference(), 0);
        ASSERT_EQ(taken->Compare(isLast ? taken.get() : entry, false), 0);
        if (!putBack) return;
        Entry* again = taken.release();
        AddExpecting(again, isLast ? again : entry);
    }
    void CheckOrder() const {
        std::vector<const Entry*> seen;
        m_list->Enumerate([&](const Entry* entry) { return seen.push_back(entry), true; });
        ASSERT_EQ(seen, std::vector<const Entry*>(m_set.begin(), m_set.end()));
        ASSERT_EQ(m_list->GetCount(), m_set.size());
    }
    std::size_t Held() const { return m_held.size(); }

private:
    const Entry* TakeHeld(std::size_t at) {
        std::swap(m_held[at], m_held.back());
        const Entry* entry = m_held.back();
        m_held.pop_back();
        return entry;
    }
    bool Forget(const Entry* entry) {
        if (--m_counts[entry] != 0) return false;
        m_set.erase(entry);
        m_counts.erase(entry);
        return true;
    }

    std::shared_ptr<typename Kind::List> m_list = std::make_shared<typename Kind::List>();
    pool_test::EntrySet<Entry> m_set;
    std::map<const Entry*, long> m_counts;
    std::vector<const Entry*> m_held;
};

template <class Kind>
class PoolModelTest : public ::testing::Test {};
using Kinds = ::testing::Types<pool_test::Fills, pool_test::Outlines>;
TYPED_TEST_SUITE(PoolModelTest, Kinds);

// Grows and shrinks by turns, down to empty, so that holes are closed, rows reused and all memory is given
// back.
TYPED_TEST(PoolModelTest, BehavesAsASetUnderRandomOperations) {
    Model<TypeParam> model;
    std::mt19937 random(20);
    for (unsigned phase = 0; phase < 8; ++phase) {
        const unsigned adding = phase % 2 == 0 ? 70 : 20;
        for (unsigned step = 0; step < 4000; ++step) {
            const unsigned dice = pool_test::Pick(random, 100);
            if (dice < adding)
                model.Add(pool_test::Pick(random, 1500));
            else if (model.Held() != 0 && dice < 90)
                model.Remove(random() % model.Held());
            else if (model.Held() != 0)
                model.Extract(random() % model.Held(), dice % 2 == 0);
            if (step % 500 == 0) model.CheckOrder();
            if (step % 1000 == 999) model.RemoveMany(step % 150);
            if (this->HasFatalFailure()) return;
        }
        while (phase % 4 == 3 && model.Held() != 0)
            model.Remove(model.Held() - 1);
        model.CheckOrder();
    }
}

struct Node : VyrFOM::InternNode {};

// Few different hashes, at both ends of the slots: long runs that wrap around.
TEST(InternIndexTest, FindsWhatIsThereAmongCollisions) {
    VyrFOM::InternIndex index;
    std::vector<Node> nodes(200);
    std::map<const VyrFOM::InternNode*, std::uint64_t> model;  // with their hashes
    std::mt19937 random(4);
    for (unsigned step = 0; step < 20000; ++step) {
        Node& node = nodes[pool_test::Pick(random, 200)];
        const auto at = model.find(&node);
        if (at != model.end()) {
            index.Erase(at->second, node);
            model.erase(at);
        } else {
            const std::uint64_t hash =
                std::uint64_t{step % 3} - 1 + (std::uint64_t{pool_test::Pick(random, 3)} << 58);
            index.Reserve(1);
            index.Insert(hash, node);
            model.emplace(&node, hash);
        }
        for (std::size_t i = step % 7; i < nodes.size(); i += 7) {
            const auto expected = model.find(&nodes[i]);
            const std::uint64_t hash = expected != model.end() ? expected->second : 0;
            const auto* found =
                index.Find(hash, [&](const VyrFOM::InternNode& n) { return &n == &nodes[i]; });
            ASSERT_EQ(found, expected != model.end() ? &nodes[i] : nullptr);
        }
    }
}

}  // namespace

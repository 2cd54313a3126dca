#include "binding/document.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "binding/containers.h"
#include "binding/fnv1a.h"
#include "binding/page_store.h"

namespace wex {

namespace {

TEST(Fnv1a32, MatchesTheReferenceValues) {
    EXPECT_EQ(Fnv1a32(""), 2166136261u);
    EXPECT_EQ(Fnv1a32("a"), 0xE40C292Cu);
    EXPECT_EQ(Fnv1a32("foobar"), 0xBF9CF968u);
}

class StringInternTableTest : public ::testing::Test {
  protected:
    DocumentPool pool_;
    StringInternTable table_{pool_};
};

// The empty text is the one shared entry that nothing counts.
TEST_F(StringInternTableTest, TheSameTextSharesOneCountedEntryUntilItsLastReferenceGoesAndTheEmptyTextNone) {
    StringEntry* entry = table_.Intern("league");
    EXPECT_EQ(table_.Intern(std::string("league")), entry);
    EXPECT_EQ(entry->references, 2u);
    EXPECT_EQ(entry->hash, Fnv1a32("league"));
    EXPECT_EQ(entry->View(), "league");
    EXPECT_EQ(entry->Text()[6], '\0');
    EXPECT_EQ(table_.Count(), 1u);
    table_.Release(entry);
    EXPECT_EQ(table_.Count(), 1u);
    EXPECT_EQ(entry->references, 1u);
    table_.Release(entry);
    EXPECT_EQ(table_.Count(), 0u);
    EXPECT_EQ(table_.Intern("league")->references, 1u);

    StringEntry* empty = table_.Intern("");
    EXPECT_EQ(empty, StringEntry::Empty());
    EXPECT_EQ(table_.Intern(std::string_view()), StringEntry::Empty());
    EXPECT_EQ(table_.Count(), 1u);
    table_.Release(empty);
    EXPECT_EQ(empty->references, 0u);
    EXPECT_EQ(empty->Text()[0], '\0');
}

TEST_F(StringInternTableTest, StartsWithEightBucketsAndDoublesPastOneEntryPerBucket) {
    EXPECT_EQ(table_.BucketCount(), 8u);
    for (int index = 0; index < 8; ++index) {
        table_.Intern("name" + std::to_string(index));
    }
    EXPECT_EQ(table_.BucketCount(), 8u);
    table_.Intern("name8");
    EXPECT_EQ(table_.BucketCount(), 16u);
    for (int index = 9; index < 1000; ++index) {
        table_.Intern("name" + std::to_string(index));
    }
    EXPECT_EQ(table_.BucketCount(), 1024u);
    // Each outgrown bucket array went back: a table made with room for every text holds as many pages.
    DocumentPool roomyPool;
    StringInternTable roomy(roomyPool);
    roomy.Reserve(1000);
    for (int index = 0; index < 1000; ++index) {
        roomy.Intern("name" + std::to_string(index));
    }
    EXPECT_EQ(pool_.PageCount(), roomyPool.PageCount());
    // Room made ahead of time keeps the same load factor.
    table_.Reserve(24);
    EXPECT_EQ(table_.BucketCount(), 1024u);
    table_.Reserve(25);
    EXPECT_EQ(table_.BucketCount(), 2048u);
    for (int index = 0; index < 1000; ++index) {
        const std::string text = "name" + std::to_string(index);
        ASSERT_EQ(table_.Intern(text)->references, 2u) << text;
    }
    EXPECT_EQ(table_.Count(), 1000u);
}

// Texts that share a slot of the recent ones must not be taken for each
// other, and a removed entry must not be found there again.
TEST_F(StringInternTableTest, RecentTextsAreTheirOwnEntriesAndLeaveWhenRemoved) {
    for (int round = 0; round < 2; ++round) {
        for (int index = 0; index < 2000; ++index) {
            const std::string text = std::string(index % 7, 'x') + "n" + std::to_string(index);
            StringEntry* entry = table_.InternRecent(text);
            ASSERT_EQ(entry->View(), text);
            ASSERT_EQ(entry->references, round + 1u);
            ASSERT_EQ(table_.Intern(text), entry);
            table_.Release(entry);
        }
    }
    StringEntry* entry = table_.InternRecent("n0");
    table_.Release(entry);
    table_.Release(entry);
    table_.Release(entry);
    EXPECT_EQ(table_.Count(), 1999u);
    EXPECT_EQ(table_.InternRecent("n0")->references, 1u);
    EXPECT_EQ(table_.Count(), 2000u);
    EXPECT_EQ(table_.InternRecent(""), StringEntry::Empty());
}

// Each length that the copy into a new entry treats its own way, and the
// lengths at the edges between them.
TEST_F(StringInternTableTest, AnEntryHoldsEveryByteOfItsTextAndAZero) {
    for (std::size_t length = 1; length <= 40; ++length) {
        std::string text;
        for (std::size_t index = 0; index < length; ++index) {
            text += static_cast<char>('A' + index);
        }
        const StringEntry* entry = table_.Intern(text);
        ASSERT_EQ(entry->View(), text);
        ASSERT_EQ(entry->Text()[length], '\0') << length;
    }
}

// Pairs of texts of one length and one hash, different where each way of
// comparing looks: byte by byte, the first and the last eight bytes, and the
// library's comparison past sixteen.
TEST_F(StringInternTableTest, TextsOfTheSameHashAndLengthAreTwoEntries) {
    const std::pair<std::string_view, std::string_view> pairs[] = {
        {"wE4300", "S20400"},
        {"wE43ijklmnop", "S204ijklmnop"},
        {"abcdefghqG43", "abcdefghm004"},
        {"abcdefghijklmnopGE43", "abcdefghijklmnopc204"},
    };
    for (const auto& [first, second] : pairs) {
        SCOPED_TRACE(first);
        ASSERT_EQ(Fnv1a32(first), Fnv1a32(second));
        StringEntry* firstEntry = table_.Intern(first);
        StringEntry* secondEntry = table_.Intern(second);
        EXPECT_NE(firstEntry, secondEntry);
        EXPECT_EQ(firstEntry->View(), first);
        EXPECT_EQ(secondEntry->View(), second);
        EXPECT_EQ(table_.Intern(first), firstEntry);
    }
    EXPECT_EQ(table_.Count(), 8u);
}

// A document lives as long as its root, so what its values drop must go back
// to its pool at once: blob records, the chunks a structure empties, and the
// containers of a value that is reset, large arrays and member names included.
TEST(BindingDocument, GivesWhatItsValuesDropBackToItsPool) {
    BindingDocument document;
    for (int round = 0; round < 1000; ++round) {
        document.DeleteBlob(document.NewBlob({1, 2, 3}));
    }
    EXPECT_EQ(document.Pool().PageCount(), 0u);

    StructureRecord* record = StructureRecord::Create(document);
    std::size_t pagesAfterFirstRound = 0;
    for (int round = 0; round < 20; ++round) {
        for (std::uint32_t index = 0; index < 3 * StructureRecord::kMaxChunkItems; ++index) {
            record->FindOrAdd(document, std::to_string(100000 + index));
        }
        for (std::uint32_t index = 0; index < 3 * StructureRecord::kMaxChunkItems; ++index) {
            ASSERT_TRUE(record->Remove(document, std::to_string(100000 + index)));
        }
        if (round == 0) {
            pagesAfterFirstRound = document.Pool().PageCount();
        }
    }
    EXPECT_EQ(document.Pool().PageCount(), pagesAfterFirstRound);

    // Containers inside a value go with it, and so do the chunks a structure outgrew.
    BindingProperty& slot = record->FindOrAdd(document, "slot");
    const std::size_t bucketBlocks = document.Pool().LargeBlockCount();  // the intern table's, grown above
    const std::uint32_t names = document.Strings().Count();
    for (int round = 0; round < 1000; ++round) {
        slot.Member("structure").At(0).SetSigned(round);
        for (int member = 0; member < 20; ++member) {
            slot.Member("grown").Member(std::to_string(member));
        }
        // Elements past what the largest pooled record holds: a block of their own.
        slot.Member("long").At(DocumentPool::kMaxPooledSize / sizeof(BindingProperty)).SetSigned(round);
        ASSERT_EQ(document.Pool().LargeBlockCount(), bucketBlocks + 1);
        slot.Reset();
        ASSERT_EQ(document.Pool().LargeBlockCount(), bucketBlocks);
        ASSERT_EQ(document.Strings().Count(), names);
        if (round == 0) {
            pagesAfterFirstRound = document.Pool().PageCount();
        }
    }
    EXPECT_EQ(document.Pool().PageCount(), pagesAfterFirstRound);
    record->Remove(document, "slot");
    record->Destroy(document);
}

}  // namespace

}  // namespace wex

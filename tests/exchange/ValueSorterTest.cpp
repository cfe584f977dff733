#include "exchange/ValueSorter.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

namespace tessaro::test {
namespace {

using Key = std::tuple<int, int, int, int>;

Key KeyOf(const StagedValue& value) {
    return {value.combination, value.source, value.area, value.period};
}

std::vector<StagedValue> RandomValues(int count) {
    std::mt19937 random(7); // NOLINT: the same values each time
    std::vector<StagedValue> values;
    for (int row = 1; row <= count; ++row) {
        const auto number = [&](int most) {
            return static_cast<int>(random() % static_cast<unsigned>(2 * most)) - most;
        };
        values.push_back({row, number(5), number(3), number(4), number(6), number(2),
                          std::string(static_cast<std::size_t>(row % 256), static_cast<char>('a' + row % 26))});
    }
    return values;
}

// However many parts the values are sorted in, they come in the order of their keys, and of their rows within one.
TEST(ValueSorterTest, SortsInPartsAsInOne) {
    const QTemporaryDir folder;
    const std::vector<StagedValue> values = RandomValues(5000);
    std::vector<StagedValue> expected = values;
    std::ranges::stable_sort(expected, {}, KeyOf);
    for (const std::size_t most : {1U, 7U, 999U, 100'000U}) {
        const QString path = folder.filePath(QStringLiteral("values"));
        {
            ValueSorter sorter(path, most);
            for (const StagedValue& value : values)
                sorter.Add(value);
            sorter.Finish();
            ValueSorter::Reader reader(sorter);
            ValueSorter::Reader beside(sorter);
            StagedValue value;
            for (const StagedValue& one : expected) {
                ASSERT_TRUE(reader.Next(value));
                ASSERT_EQ(std::tie(value.row, value.footnote, value.value), std::tie(one.row, one.footnote, one.value));
                ASSERT_EQ(KeyOf(value), KeyOf(one));
            }
            EXPECT_FALSE(reader.Next(value));
            ASSERT_TRUE(beside.Next(value));
            EXPECT_EQ(value.row, expected.front().row);
        }
        EXPECT_FALSE(QFileInfo::exists(path)) << "the file goes with its sorter";
    }
}

TEST(ValueSorterTest, NoValuesGiveNone) {
    const QTemporaryDir folder;
    ValueSorter sorter(folder.filePath(QStringLiteral("values")));
    sorter.Finish();
    StagedValue value;
    EXPECT_FALSE(ValueSorter::Reader(sorter).Next(value));
}

} // namespace
} // namespace tessaro::test

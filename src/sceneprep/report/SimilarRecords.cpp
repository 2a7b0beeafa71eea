// Two records that differ in one property are equal without it. So every record is entered once for each of its
// properties, under the sum of the hashes of all other properties; records that meet there are similar. A record that
// lacks the property has the sum of all of its hashes there, and is entered under that, too.

#include <sceneprep/report/SimilarRecords.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

constexpr std::size_t kNoProperty = static_cast<std::size_t>(-1);

/// A record without one of its properties, or the whole record.
struct Entry
{
    std::size_t record;
    std::size_t property;
};

std::uint64_t HashOf(const Property& property)
{
    const std::hash<std::string> hash;
    std::uint64_t mixed = hash(property.name) * 0x9E3779B97F4A7C15ULL ^ hash(property.value);
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    return mixed ^ (mixed >> 31U);
}

std::uint64_t SumOfHashes(const Properties& record)
{
    std::uint64_t sum = 0;
    for (const Property& property : record)
        sum += HashOf(property);
    return sum;
}

/// Returns the record without a property, in the order of names.
Properties Rest(const std::vector<Properties>& records, const Entry& entry)
{
    Properties rest = records[entry.record];
    if (entry.property != kNoProperty)
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(entry.property));
    std::sort(rest.begin(), rest.end(), [](const Property& a, const Property& b) { return a.name < b.name; });
    return rest;
}

/// Adds the entries that really are equal without their properties as one group.
void AddGroup(const std::vector<Properties>& records, std::vector<Entry> entries, const std::string& name,
              std::vector<SimilarRecords>& groups)
{
    const Properties rest = Rest(records, entries.front());
    std::erase_if(entries, [&](const Entry& entry) { return Rest(records, entry) != rest; });
    if (entries.size() < 2)
        return;
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.record < b.record; });
    SimilarRecords& group = groups.emplace_back();
    group.property = name;
    for (const Entry& entry : entries)
    {
        group.records.push_back(entry.record);
        group.values.push_back(entry.property == kNoProperty ? "" : records[entry.record][entry.property].value);
    }
}

/// Splits entries of equal rest by the name of the property that they lack.
void AddGroups(const std::vector<Properties>& records, const std::vector<Entry>& entries,
               std::vector<SimilarRecords>& groups)
{
    std::vector<Entry> whole;
    std::map<std::string, std::vector<Entry>> without;  // by name
    for (const Entry& entry : entries)
    {
        if (entry.property == kNoProperty)
            whole.push_back(entry);
        else
            without[records[entry.record][entry.property].name].push_back(entry);
    }
    for (auto& [name, list] : without)
    {
        list.insert(list.end(), whole.begin(), whole.end());
        AddGroup(records, std::move(list), name, groups);
    }
}

}  // namespace

std::vector<SimilarRecords> FindSimilarRecords(const std::vector<Properties>& records)
{
    std::vector<std::uint64_t> keys;  // in the order in which they are met
    std::unordered_map<std::uint64_t, std::vector<Entry>> entriesOf;
    const auto enter = [&](std::uint64_t key, const Entry& entry) {
        const auto [entries, isNew] = entriesOf.try_emplace(key);
        if (isNew)
            keys.push_back(key);
        entries->second.push_back(entry);
    };

    // (1) Equal records.
    std::vector<SimilarRecords> groups;
    for (std::size_t record = 0; record < records.size(); ++record)
        enter(SumOfHashes(records[record]), {record, kNoProperty});
    std::vector<std::size_t> different;
    for (const std::uint64_t key : keys)
    {
        different.push_back(entriesOf[key].front().record);
        if (entriesOf[key].size() > 1)
            AddGroup(records, entriesOf[key], "", groups);
    }

    // (2) Records that differ in one property.
    keys.clear();
    entriesOf.clear();
    for (const std::size_t record : different)
    {
        const std::uint64_t sum = SumOfHashes(records[record]);
        enter(sum, {record, kNoProperty});
        for (std::size_t property = 0; property < records[record].size(); ++property)
            enter(sum - HashOf(records[record][property]), {record, property});
    }
    for (const std::uint64_t key : keys)
    {
        if (entriesOf[key].size() > 1)
            AddGroups(records, entriesOf[key], groups);
    }
    return groups;
}

}  // namespace Sceneprep

// A hash table with chains.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "foundation/varray.h"
#include "foundation/vstringhash.h"

namespace connectdialog {

// How keys are distributed; a further kind of key adds an overload.
inline std::uint32_t VMapHash(std::uint32_t key) {
    return key;
}
inline std::uint32_t VMapHash(std::u16string_view key) {
    return VStringHash(key);
}

/// Maps keys to values; a key stands in it once. Owns its entries.
///
/// The first insertion makes the buckets, and their number never changes after that: there is no rehash, so an entry
/// keeps its address until it is removed. A new entry stands at the head of its chain; an iteration goes through the
/// buckets by index and through each chain from its head. Removing an entry ends iterations that stand on it.
template <class K, class V>
class VMap {
  public:
    struct Entry {
        K key;
        V value;
        Entry* next;
    };
    static constexpr std::uint32_t kDefaultBucketCount = 25;

    /// Requires: bucketCount > 0.
    explicit VMap(std::uint32_t bucketCount = kDefaultBucketCount) : initialBucketCount(bucketCount) {}
    VMap(const VMap&) = delete;
    VMap& operator=(const VMap&) = delete;
    ~VMap() { RemoveAll(); }

    std::uint32_t GetCount() const { return count; }
    /// 0 before the first insertion and after RemoveAll.
    std::uint32_t GetBucketCount() const { return static_cast<std::uint32_t>(buckets.GetCount()); }

    /// The value of the key, owned by the map, or null.
    V* Find(const K& key) {
        if (buckets.IsEmpty()) return nullptr;
        Entry* entry = *LinkTo(key);
        return entry != nullptr ? &entry->value : nullptr;
    }
    const V* Find(const K& key) const { return const_cast<VMap*>(this)->Find(key); }
    /// The value of the key; a key that is new is inserted with a value-initialised value.
    V& operator[](const K& key) {
        if (V* found = Find(key)) return *found;
        while (buckets.GetCount() < initialBucketCount) buckets.Add(nullptr);
        Entry*& head = buckets[VMapHash(key) % GetBucketCount()];
        head = new Entry{key, V(), head};
        ++count;
        return head->value;
    }
    /// Gives whether the key was there.
    bool Remove(const K& key) {
        if (buckets.IsEmpty()) return false;
        Entry** link = LinkTo(key);
        if (*link == nullptr) return false;
        delete std::exchange(*link, (*link)->next);
        --count;
        return true;
    }
    void RemoveAll() {
        for (Entry* entry : buckets) {
            while (entry != nullptr) delete std::exchange(entry, entry->next);
        }
        buckets = VArray<Entry*>();
        count = 0;
    }

    class Iterator {
      public:
        Iterator(Entry* const* bucket, Entry* const* lastBucket) : bucket(bucket), lastBucket(lastBucket) {
            if (bucket != lastBucket) entry = *bucket;
            SkipEmptyBuckets();
        }
        Entry& operator*() const { return *entry; }
        Entry* operator->() const { return entry; }
        Iterator& operator++() {
            entry = entry->next;
            SkipEmptyBuckets();
            return *this;
        }
        bool operator==(const Iterator& other) const { return entry == other.entry; }

      private:
        void SkipEmptyBuckets() {
            while (entry == nullptr && bucket != lastBucket) {
                if (++bucket != lastBucket) entry = *bucket;
            }
        }
        Entry* const* bucket;
        Entry* const* lastBucket;
        Entry* entry = nullptr;
    };
    Iterator begin() const { return {buckets.begin(), buckets.end()}; }
    Iterator end() const { return {buckets.end(), buckets.end()}; }

  private:
    /// The pointer that leads to the key's entry, or the null one at the end of its chain.
    Entry** LinkTo(const K& key) {
        Entry** link = &buckets[VMapHash(key) % GetBucketCount()];
        while (*link != nullptr && !((*link)->key == key)) link = &(*link)->next;
        return link;
    }

    VArray<Entry*> buckets;
    std::uint32_t count = 0;
    std::uint32_t initialBucketCount;
};

}  // namespace connectdialog

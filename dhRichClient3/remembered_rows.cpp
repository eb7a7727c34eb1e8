#include "dhRichClient3/remembered_rows.h"

#include "dhRichClient3/row_store.h"

#include <algorithm>
#include <functional>

namespace dhRichClient3 {
namespace {

/// A larger answer, or a longer question, is not worth its memory.
constexpr std::size_t kMostBytes = 4096;

std::size_t HashOfText(std::string_view text) { return std::hash<std::string_view>()(text); }

}  // namespace

std::shared_ptr<const RowStore> RememberedRows::Find(std::string_view text) {
    if (slots_.empty() || text.size() > kMostBytes) return nullptr;
    const std::size_t hash = HashOfText(text);
    Slot* const set = SetOf(hash);
    Slot* const slot = std::find_if(set, set + kSlotsOfSet,
                                    [&](const Slot& known) { return known.hash == hash && known.text == text; });
    if (slot == set + kSlotsOfSet || !changes_.Same(slot->reads, slot->read)) return nullptr;
    slot->asked = ++questions_;
    return slot->rows;
}

void RememberedRows::Keep(std::string_view text, TableSet reads, const std::shared_ptr<const RowStore>& rows) {
    if (text.size() > kMostBytes || rows->Bytes() > kMostBytes) return;
    if (slots_.empty()) slots_.resize(kSets * kSlotsOfSet);
    const std::size_t hash = HashOfText(text);
    Slot* const set = SetOf(hash);
    Slot* const end = set + kSlotsOfSet;
    Slot* slot = std::find_if(set, end, [&](const Slot& known) { return known.hash == hash; });
    if (slot == end) {
        slot = std::min_element(set, end, [](const Slot& left, const Slot& right) { return left.asked < right.asked; });
        *slot = Slot{hash, {}, nullptr, 0, 0, ++questions_};
        return;
    }
    *slot = Slot{hash, std::string(text), rows, reads, changes_.Now(), ++questions_};
}

}  // namespace dhRichClient3

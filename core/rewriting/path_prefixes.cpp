#include "core/rewriting/path_prefixes.h"

#include <cstring>
#include <new>
#include <utility>

#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

constexpr size_t FIRST_SLOT_COUNT = 16; // it is doubled: always a power of two

path_prefix *new_slots(size_t count) {
    void *block = JLI_MemAlloc(count * sizeof(path_prefix));
    path_prefix *slots = static_cast<path_prefix *>(block);
    for (size_t i = 0; i < count; i++) {
        new (&slots[i]) path_prefix;
    }
    return slots;
}

void release_slots(path_prefix *slots, size_t count) {
    for (size_t i = 0; i < count; i++) {
        slots[i].~path_prefix();
    }
    JLI_MemFree(slots);
}

// Eight bytes at a time, and one by one what is left.
size_t hash_of(std::string_view path) {
    // Of a product the last byte alone depends on all that comes in: it is put first, as the low
    // bits choose the slot.
    constexpr size_t FACTOR = 0x9E3779B97F4A7C15;
    size_t hash = 0;
    const auto mix = [&hash](size_t value) { hash = __builtin_bswap64((hash ^ value) * FACTOR); };
    for (size_t word; path.size() >= sizeof word; path.remove_prefix(sizeof word)) {
        memcpy(&word, path.data(), sizeof word);
        mix(word);
    }
    for (const char byte : path) {
        mix(static_cast<unsigned char>(byte));
    }
    return hash;
}

// The slot of `path`, or the empty one where it belongs.
path_prefix &slot_of(path_prefixes &known, std::string_view path) {
    size_t i = hash_of(path) & (known.slot_count - 1);
    while (known.slots[i].path != nullptr && path != known.slots[i].path.get()) {
        i = (i + 1) & (known.slot_count - 1);
    }
    return known.slots[i];
}

// Keeps a quarter of the slots empty, so that a search soon ends.
void make_room(path_prefixes &known) {
    if (4 * (known.used + 1) <= 3 * known.slot_count) {
        return;
    }
    const size_t slot_count = known.slot_count == 0 ? FIRST_SLOT_COUNT : 2 * known.slot_count;
    // Where there is no memory the process ends in here, and what is known is released at its end.
    path_prefix *slots = new_slots(slot_count);
    path_prefix *old_slots = std::exchange(known.slots, slots);
    const size_t old_count = std::exchange(known.slot_count, slot_count);
    for (size_t i = 0; i < old_count; i++) {
        if (old_slots[i].path != nullptr) {
            slot_of(known, old_slots[i].path.get()) = std::move(old_slots[i]);
        }
    }
    release_slots(old_slots, old_count);
}

text_ptr full_path_of(std::string_view path) {
    // An absolute path has no longer full name, save for what the system makes of device names.
    DWORD size = static_cast<DWORD>(path.size()) + 16;
    while (true) {
        text_ptr full_path(static_cast<char *>(JLI_MemAlloc(size)));
        const DWORD length = GetFullPathNameA(path.data(), size, full_path.get(), nullptr);
        if (length == 0) {
            return copy_text(path);
        }
        if (length < size) {
            return full_path;
        }
        size = length;
    }
}

} // namespace

path_prefixes::~path_prefixes() {
    release_slots(slots, slot_count);
}

const char *existing_full_path(path_prefixes &known, std::string_view path) {
    make_room(known);
    path_prefix &slot = slot_of(known, path);
    if (slot.path == nullptr) {
        text_ptr copy = copy_text(path);
        if (kind_of(copy.get()) == entry_kind::missing) {
            return nullptr;
        }
        text_ptr full_path = full_path_of(copy.get());
        if (path != full_path.get()) {
            slot.full_path = std::move(full_path);
        }
        slot.path = std::move(copy);
        known.used++;
    }
    return slot.full_path != nullptr ? slot.full_path.get() : slot.path.get();
}

#pragma once
#include <cstdint>

namespace vexplot {

// The class record of an archived model object (CArchive::WriteObjectRecord)
// begins with a 16-bit little-endian tag:
//
//   0x0000            the null object; nothing follows
//   0xFFFF            a class new to this archive: its schema (uint32) and
//                     its name (archive string) follow, then the object
//   0x8000 | index    a class this archive introduced before, by its index
//                     (1 for the first class introduced, 2 for the next, up
//                     to kMaxClassIndex); the object follows
//
// "The object" is whatever the class's Serialize writes, possibly nothing.
// Every other tag value is malformed, as is an index not yet introduced or
// a class introduced twice. Indices are counted per archive, so a record
// can only be read after the records before it in the same archive.
struct ClassRecordTag {
    static constexpr uint16_t kNull = 0x0000;
    static constexpr uint16_t kNewClass = 0xFFFF;
    static constexpr uint16_t kIndexFlag = 0x8000;
    // 0x8000 | 0x7FFF would be kNewClass.
    static constexpr uint16_t kMaxClassIndex = 0x7FFE;

    static constexpr uint16_t ForIndex(uint16_t index) { return static_cast<uint16_t>(kIndexFlag | index); }
    // The class index a back-reference tag names; 0 for any other tag
    // (0x8000 itself names no class).
    static constexpr uint16_t IndexOf(uint16_t tag) {
        return (tag & kIndexFlag) && tag != kNewClass ? static_cast<uint16_t>(tag & ~kIndexFlag) : 0;
    }
};

}  // namespace vexplot

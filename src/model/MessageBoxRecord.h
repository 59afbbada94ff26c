#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "model/ArchiveObject.h"

namespace vexplot {

// A message of the control's own message box, defined entirely by data: it
// is kept as a serialized object (class record "CMessageBoxExt", schema 1)
// and read through CArchive like any model record. Fields in record order:
// the text (lines separated by '\n'), the caption, the style bits (low
// nibble the button set, next the icon, next the default button), and the
// settings value name and sub-key that remember "don't show again".
class MessageBoxRecord final : public ArchiveObject {
public:
    std::string text;
    std::string caption;
    uint32_t style = 0;
    std::string valueName;
    std::string subKey;

    static const ArchiveClass& RuntimeClass();
    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    void Serialize(CArchive& archive) override;

    // The record serialized as one object with its class record, and back.
    // Read raises ArchiveError for bytes that are not such a record.
    std::vector<uint8_t> Write() const;
    static MessageBoxRecord Read(std::span<const uint8_t> bytes);
};

}  // namespace vexplot

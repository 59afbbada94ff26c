#include "model/MessageBoxRecord.h"

#include "com/ComPtr.h"
#include "com/MemoryStream.h"
#include "model/ArchiveError.h"
#include "model/CArchive.h"

namespace vexplot {

const ArchiveClass& MessageBoxRecord::RuntimeClass() {
    static const ArchiveClass cls("CMessageBoxExt", 1, [] { return std::make_unique<MessageBoxRecord>(); });
    return cls;
}

void MessageBoxRecord::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive.WriteString(text);
        archive.WriteString(caption);
        archive.WriteUInt32(style);
        archive.WriteString(valueName);
        archive.WriteString(subKey);
        return;
    }
    MessageBoxRecord read;
    read.text = archive.ReadString("message text");
    read.caption = archive.ReadString("message caption");
    read.style = archive.ReadUInt32("message style");
    read.valueName = archive.ReadString("message value name");
    read.subKey = archive.ReadString("message sub-key");
    *this = std::move(read);  // all or nothing
}

std::vector<uint8_t> MessageBoxRecord::Write() const {
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>();
    {
        CArchive archive(stream.Get(), CArchive::Mode::Store);
        archive.WriteObjectRecord(this);
        archive.Close();
    }
    return stream->Bytes();
}

MessageBoxRecord MessageBoxRecord::Read(std::span<const uint8_t> bytes) {
    static const bool registered = (ArchiveClass::Register(RuntimeClass()), true);
    (void)registered;
    ComPtr<MemoryStream> stream = MakeComObject<MemoryStream>(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    CArchive archive(stream.Get(), CArchive::Mode::Load);
    std::unique_ptr<ArchiveObject> object = archive.ReadObjectRecord("message record");
    auto* message = dynamic_cast<MessageBoxRecord*>(object.get());
    if (!message) throw ArchiveError("message record: not a CMessageBoxExt", 0);
    return std::move(*message);
}

}  // namespace vexplot

#include "model/ArchiveClass.h"

#include <map>
#include <mutex>

#include "model/ArchiveObject.h"

namespace vexplot {

namespace {

// The process-wide table of archived classes. Entries point at classes of
// static storage and are never removed.
class ClassTable {
public:
    static ClassTable& Instance() {
        static ClassTable table;
        return table;
    }

    void Register(const ArchiveClass& cls) {
        std::lock_guard lock(mutex_);
        byName_.insert_or_assign(cls.Name(), &cls);
    }

    const ArchiveClass* Find(std::string_view name) const {
        std::lock_guard lock(mutex_);
        const auto it = byName_.find(name);
        return it == byName_.end() ? nullptr : it->second;
    }

private:
    mutable std::mutex mutex_;
    std::map<std::string, const ArchiveClass*, std::less<>> byName_;
};

}  // namespace

ArchiveClass::ArchiveClass(std::string name, uint32_t schema, Factory create)
    : name_(std::move(name)), schema_(schema), create_(std::move(create)) {}

std::unique_ptr<ArchiveObject> ArchiveClass::Create() const { return create_(); }

void ArchiveClass::Register(const ArchiveClass& cls) { ClassTable::Instance().Register(cls); }

const ArchiveClass* ArchiveClass::Find(std::string_view name) { return ClassTable::Instance().Find(name); }

}  // namespace vexplot

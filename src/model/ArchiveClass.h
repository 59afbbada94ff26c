#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vexplot {

class ArchiveObject;

// The runtime class of an archived object: its name as written in class
// records, its schema number (1 for the model classes) and how to make an
// empty instance for loading. Classes register themselves once, by name,
// in the process-wide table that loading archives consult (guarded by a
// mutex; entries are never removed).
class ArchiveClass {
public:
    using Factory = std::function<std::unique_ptr<ArchiveObject>()>;

    ArchiveClass(std::string name, uint32_t schema, Factory create);

    const std::string& Name() const { return name_; }
    uint32_t Schema() const { return schema_; }
    std::unique_ptr<ArchiveObject> Create() const;

    // Registers `cls` (kept by reference: give it static storage) under its
    // name; registering the same name again replaces the entry.
    static void Register(const ArchiveClass& cls);
    // The class registered under `name`, or null.
    static const ArchiveClass* Find(std::string_view name);

private:
    std::string name_;
    uint32_t schema_;
    Factory create_;
};

}  // namespace vexplot

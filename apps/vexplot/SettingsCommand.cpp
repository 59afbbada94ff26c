#include "SettingsCommand.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string_view>

#include "settings/CRegistryKey.h"
#include "settings/KeyPath.h"
#include "settings/MessageSink.h"
#include "settings/RegistryStatus.h"
#include "settings/SettingsStore.h"

namespace vexplot {

namespace {

constexpr int kOk = 0;
constexpr int kNotFound = 1;
constexpr int kUsage = 2;

constexpr const char* kUsageText =
    "usage: vexplot settings list [KEY]\n"
    "       vexplot settings get KEY NAME\n"
    "       vexplot settings set KEY NAME dword|string|binary VALUE\n"
    "       vexplot settings delete KEY [NAME]\n"
    "KEY is a path below HKEY_CURRENT_USER, e.g.\n"
    "  \"Software\\Kestrune Corporation\\Vexplot\\3DView\"; \"\" names the key's default value.\n"
    "dword takes decimal, negative or 0x-hex; binary takes hex bytes (\"01 ff 2a\" or \"01ff2a\").\n"
    "delete KEY deletes the key with all its sub-keys and values.\n"
    "The store is $VEXPLOT_REGISTRY, else $XDG_CONFIG_HOME/vexplot/registry.db\n"
    "(~/.config/vexplot/registry.db when XDG_CONFIG_HOME is not set).\n";

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

// Accepts the key as regedit shows it too ("HKEY_CURRENT_USER\..." or
// "HKCU\..."), and with a trailing backslash.
std::string_view KeyBelowRoot(std::string_view key) {
    if (!key.empty() && key.back() == '\\') {
        key.remove_suffix(1);
    }
    for (const std::string_view root : {"HKEY_CURRENT_USER", "HKCU"}) {
        if (EqualsNoCase(key, root)) {
            return {};
        }
        if (key.size() > root.size() && key[root.size()] == '\\' &&
            EqualsNoCase(key.substr(0, root.size()), root)) {
            return key.substr(root.size() + 1);
        }
    }
    return key;
}

std::optional<int32_t> ParseDword(std::string_view text) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    int64_t value = 0;
    const char* first = text.data() + (hex ? 2 : 0);
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(first, last, value, hex ? 16 : 10);
    if (error != std::errc() || end != last || first == last || value < INT32_MIN ||
        value > int64_t{UINT32_MAX} || (hex && value < 0)) {
        return std::nullopt;
    }
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

std::optional<std::vector<uint8_t>> ParseHex(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c))) {
            digits += c;
        } else if (!std::isspace(static_cast<unsigned char>(c))) {
            return std::nullopt;
        }
    }
    if (digits.size() % 2 != 0) {
        return std::nullopt;
    }
    std::vector<uint8_t> bytes;
    for (size_t at = 0; at < digits.size(); at += 2) {
        uint8_t byte = 0;
        std::from_chars(digits.data() + at, digits.data() + at + 2, byte, 16);
        bytes.push_back(byte);
    }
    return bytes;
}

// The typed bytes as the store keeps them (strings with their terminating
// NUL, DWORDs little-endian), or nullopt with `problem` saying why not.
std::optional<RegistryValue> ParseValue(const std::string& type, const std::string& text,
                                        std::string* problem) {
    if (EqualsNoCase(type, "string")) {
        return RegistryValue::String("", text);
    }
    if (EqualsNoCase(type, "dword")) {
        if (const auto dword = ParseDword(text)) {
            return RegistryValue::Dword("", *dword);
        }
    } else if (EqualsNoCase(type, "binary")) {
        if (auto bytes = ParseHex(text)) {
            return RegistryValue{"", ValueType::Binary, std::move(*bytes)};
        }
    } else {
        *problem = "unknown type \"" + type + "\" (dword, string or binary)";
        return std::nullopt;
    }
    *problem = "not a valid " + type + " value: \"" + text + "\"";
    return std::nullopt;
}

std::string Hex(const std::vector<uint8_t>& bytes) {
    std::string text;
    char pair[4];
    for (const uint8_t byte : bytes) {
        std::snprintf(pair, sizeof pair, "%02x", byte);
        text += text.empty() ? "" : " ";
        text += pair;
    }
    return text;
}

std::string TypeAndData(const RegistryValue& value) {
    switch (value.type) {
    case ValueType::String: return "REG_SZ  " + value.Text();
    case ValueType::Dword: {
        const auto dword = value.DwordValue();
        if (!dword) {
            return "REG_DWORD  (" + std::to_string(value.data.size()) + " bytes) " + Hex(value.data);
        }
        char text[40];
        std::snprintf(text, sizeof text, "%d (0x%08x)", *dword, static_cast<uint32_t>(*dword));
        return std::string("REG_DWORD  ") + text;
    }
    case ValueType::Binary: return "REG_BINARY  " + Hex(value.data);
    }
    return "REG_TYPE_" + std::to_string(static_cast<uint32_t>(value.type)) + "  " + Hex(value.data);
}

std::string ValueLine(const RegistryValue& value) {
    std::string line = (value.name.empty() ? "(Default)" : value.name) + "  " + TypeAndData(value);
    line.erase(line.find_last_not_of(' ') + 1);  // an empty value leaves no trailing blanks
    return line;
}

// Failure messages of the key wrapper, written where the command writes its errors.
class StreamMessageSink final : public MessageSink {
public:
    explicit StreamMessageSink(std::ostream& stream) : stream_(stream) {}
    int ShowMessage(const std::string& text, const std::string& caption, int) override {
        stream_ << caption << ": " << text << '\n';
        return 1;
    }

private:
    std::ostream& stream_;
};

// One run of the command: the parsed words, the store and the two streams.
class SettingsCommand {
public:
    SettingsCommand(const std::vector<std::string>& args, std::shared_ptr<SettingsStore> store,
                    std::ostream& out, std::ostream& err)
        : args_(args), store_(std::move(store)), out_(out), err_(err), sink_(err) {}

    int Run() {
        if (args_.size() == 1 && (args_[0] == "help" || args_[0] == "--help" || args_[0] == "-h")) {
            out_ << kUsageText;
            return kOk;
        }
        const std::string verb = args_.empty() ? "" : args_[0];
        const size_t count = args_.size();
        if (verb == "list" && count <= 2) return Guarded(&SettingsCommand::List);
        if (verb == "get" && count == 3) return Guarded(&SettingsCommand::Get);
        if (verb == "set" && count == 5) return Guarded(&SettingsCommand::Set);
        if (verb == "delete" && (count == 2 || count == 3)) return Guarded(&SettingsCommand::Delete);
        return Usage("");
    }

private:
    using Action = int (SettingsCommand::*)();

    // Checks the key argument and the store before the action runs.
    int Guarded(Action action) {
        key_ = args_.size() > 1 ? KeyBelowRoot(args_[1]) : std::string_view();
        if (!IsValidKeyPath(key_)) {
            return Usage("invalid key path \"" + args_[1] + "\"");
        }
        if (!store_) {
            store_ = SettingsStore::Default();  // only now, so a usage error creates no file
        }
        if (!store_->IsUsable()) {
            const auto text = store_->TakeFailureToReport();
            err_ << "Error: " << text.value_or("the settings database cannot be used") << '\n';
            return kNotFound;
        }
        return (this->*action)();
    }

    int List() {
        out_ << "# " << store_->Path() << '\n';
        CRegistryKey key(&sink_, store_);
        if (!key.OpenExisting(RootKey::CurrentUser, key_)) {
            return Failure("no such key: " + std::string(key_));
        }
        ListTree(key);
        return kOk;
    }

    void ListTree(const CRegistryKey& key) {
        const auto names = key.ValueNames();
        if (!key.Path().empty() || !names.empty()) {
            out_ << (key.Path().empty() ? "HKEY_CURRENT_USER" : key.Path()) << '\n';
        }
        for (const auto& name : names) {
            if (const auto value = key.QueryValue(name)) {
                out_ << "  " << ValueLine(*value) << '\n';
            }
        }
        for (const auto& child : key.SubKeyNames()) {
            CRegistryKey sub(&sink_, store_);
            if (sub.OpenExisting(RootKey::CurrentUser, JoinKeyPath(key.Path(), child))) {
                ListTree(sub);
            }
        }
    }

    int Get() {
        CRegistryKey key(&sink_, store_);
        if (!key.OpenExisting(RootKey::CurrentUser, key_)) {
            return Failure("no such key: " + std::string(key_));
        }
        const auto value = key.QueryValue(args_[2]);
        if (!value) {
            return Failure("no such value: \"" + args_[2] + "\" in " + std::string(key_));
        }
        out_ << ValueLine(*value) << '\n';
        return kOk;
    }

    int Set() {
        std::string problem;
        const auto value = ParseValue(args_[3], args_[4], &problem);
        if (!value) {
            return Usage(problem);
        }
        CRegistryKey key(&sink_, store_);
        if (!key.OpenUnder(RootKey::CurrentUser, key_)) {
            return kNotFound;  // the reason has been shown through the sink
        }
        const long status = store_->PutValue(key_, args_[2], value->type, value->data);
        if (status != RegistryStatus::kSuccess) {
            return Failure("cannot write \"" + args_[2] + "\": " + RegistryStatus::Text(status));
        }
        return kOk;
    }

    int Delete() {
        if (args_.size() == 3) {
            return DeleteValue();
        }
        if (key_.empty()) {
            return Usage("HKEY_CURRENT_USER itself cannot be deleted");
        }
        CRegistryKey root(&sink_, store_);
        root.OpenExisting(RootKey::CurrentUser, "");
        return Outcome(root.DeleteSubKeyTree(key_), "no such key: " + std::string(key_));
    }

    int DeleteValue() {
        CRegistryKey key(&sink_, store_);
        if (!key.OpenExisting(RootKey::CurrentUser, key_)) {
            return Failure("no such key: " + std::string(key_));
        }
        const std::string missing = "no such value: \"" + args_[2] + "\" in " + std::string(key_);
        return Outcome(key.DeleteValue(args_[2]), missing);
    }

    int Outcome(long status, const std::string& whenMissing) {
        if (status == RegistryStatus::kFileNotFound) {
            return Failure(whenMissing);
        }
        if (status != RegistryStatus::kSuccess) {
            return Failure("cannot delete: " + RegistryStatus::Text(status));
        }
        return kOk;
    }

    int Failure(const std::string& text) {
        err_ << "vexplot settings: " << text << '\n';
        return kNotFound;
    }

    int Usage(const std::string& problem) {
        if (!problem.empty()) {
            err_ << "vexplot settings: " << problem << '\n';
        }
        err_ << kUsageText;
        return kUsage;
    }

    const std::vector<std::string>& args_;
    std::shared_ptr<SettingsStore> store_;
    std::ostream& out_;
    std::ostream& err_;
    StreamMessageSink sink_;
    std::string_view key_;
};

}  // namespace

int RunSettingsCommand(const std::vector<std::string>& args,
                       const std::shared_ptr<SettingsStore>& store, std::ostream& out,
                       std::ostream& err) {
    return SettingsCommand(args, store, out, err).Run();
}

int RunSettingsCommand(int argc, char** argv) {
    const std::vector<std::string> args(argv + std::min(argc, 1), argv + argc);
    return RunSettingsCommand(args, nullptr, std::cout, std::cerr);
}

}  // namespace vexplot

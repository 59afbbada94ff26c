#include "ui/ControlPropertySheet.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <sstream>

#include "settings/CRegistryKey.h"
#include "ui/LogFontRecord.h"

namespace vexplot {

namespace {

using Kind = ControlPropertySheet::Kind;
using Field = ControlPropertySheet::Field;

Field Box(std::string property, std::string label, std::string group = {}) {
    return Field{std::move(property), std::move(label), Kind::Check, std::move(group), 0, 0, {}, {}, {}};
}

Field Swatch(std::string property, std::string label, std::string tip, std::string chooserTitle,
             std::string group = {}) {
    return Field{std::move(property), std::move(label), Kind::Colour, std::move(group), 0, 0, {},
                 std::move(tip), std::move(chooserTitle)};
}

Field Edit(std::string property, std::string label, Kind kind, double min, double max, std::string group = {}) {
    return Field{std::move(property), std::move(label), kind, std::move(group), min, max, {}, {}, {}};
}

Field Choice(std::string property, std::string label, Kind kind, std::vector<std::string> choices,
             std::string group = {}) {
    return Field{std::move(property), std::move(label), kind, std::move(group), 0, 0, std::move(choices), {}, {}};
}

ControlPropertySheet::Page GeneralPage() {
    return {"General",
            {
                Swatch("BackgroundColor", "&Background Color:", "Background Color; Click to change",
                       "Background color"),
                Box("AutoHideLegend", "Auto&hide Legend window"),
                Box("ChildInfoWindow", "&Child Info Window"),
                Box("ShowToolTips", "Show &ToolTips"),
                Box("FixedAspectRatio", "Fixed Aspect Ratio"),
                Box("FastHideLegend", "&Don't Animate Legend Window"),
                Choice("MoveDirection", "Legend Window &Animation:", Kind::List,
                       {"Colapse/Explode", "Right to Left", "Left to Right", "Bottom to Top", "Top to Bottom",
                        "LeftTop to RightBottom", "RightBottom to LeftTop", "Randomize"}),
                Choice("Engine", "Graph &Engine Used:", Kind::Engine, {}),
            }};
}

ControlPropertySheet::Page ViewPage() {
    return {"3DView",
            {
                Choice("Quality3D", "Quality", Kind::Radio, {"S&olid", "&WireFrame"}, "Quality"),
                Edit("XCamRotation", "&X-axis:", Kind::Real, -1.0, 1.0, "Rotation"),
                Edit("YCamRotation", "&Y-axis:", Kind::Real, -1.0, 1.0, "Rotation"),
                Edit("ZCamRotation", "&Z-axis:", Kind::Real, -1.0, 1.0, "Rotation"),
                Edit("XCamTranslation", "X-&axis:", Kind::Real, -1.0, 1.0, "Translation"),
                Edit("YCamTranslation", "Y-ax&is:", Kind::Real, -1.0, 1.0, "Translation"),
                Edit("ZCamTranslation", "Z-axi&s:", Kind::Real, -1.0, 1.0, "Translation"),
            }};
}

ControlPropertySheet::Page InfoPage() {
    const std::string tools = "Visible Tools:";
    const std::string font = "Font:";
    return {"Info-Window",
            {
                Box("ShowPositionInfo", "Current &Position", tools),
                Box("ShowMarkerInfo", "&Markers Data", tools),
                Box("ShowRegionInfo", "&Region Info", tools),
                Box("ShowTracerInfo", "&Tracer Info", tools),
                Box("ShowDiffTracerInfo", "&Different Tracer Info", tools),
                Box("ShowZoomInfo", "Z&oom Info", tools),
                Box("InfoTransparent", "Transparent &Window", tools),
                Box("InfoVisible", "&Visible", tools),
                Swatch("InfoTextColor", "&Color:", "Text Color; Click to change", "Text color", font),
                Swatch("InfoBackColor", "Co&lor:", "Background Color; Click to change", "Background color", font),
                Field{"InfoFont", "Current &Font:", Kind::Font, font, 0, 0, {}, {}, {}},
            }};
}

ControlPropertySheet::Page AxisPage(char axis) {
    const std::string a(1, axis);
    const std::string chooser = a + "-Axis ";
    return {a + "-Axis",
            {
                Edit(a + "Label", "&Label:", Kind::Text, 0, 255),
                Choice(a + "ScaleFormat", "S&cale Format:", Kind::List,
                       {"Decimal", "Exponential", "Engineering", "Base10"}),
                Edit(a + "DecimalCount", "Decimal c&ount:", Kind::Integer, 1, 15),
                Swatch(a + "AxisColor", "Color of Numbers:", "Color of Numbers; Click to change",
                       chooser + "Number color"),
                Choice(a + "DisplayMode", "&Display Mode:", Kind::List, {"Linear", "dB"}),
                Box("Show" + a + "MajorGrid", "Draw &Major Grid Lines", "Major grid"),
                Edit(a + "MajorTicks", "Number of Ma&jor Lines:", Kind::Integer, 1, 10, "Major grid"),
                Swatch(a + "MajorGridColor", "Major Grid Line Color:", "Major Grid Line Color; Click to change",
                       chooser + "Major Grid color", "Major grid"),
                Box("Show" + a + "MinorGrid", "Draw Mi&nor Grid Lines", "Minor grid"),
                Edit(a + "MinorTicks", "Number of M&inor Lines:", Kind::Integer, 1, 10, "Minor grid"),
                Swatch(a + "MinorGridColor", "Minor Grid Line Color:", "Minor Grid Line Color; Click to change",
                       chooser + "Minor Grid color", "Minor grid"),
            }};
}

// "%g" in the C locale: 0.5, -1, 1e-05.
std::string FormatNumber(double value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out.precision(15);
    out << value;
    return out.str();
}

size_t CodePoints(const std::string& text) {
    size_t n = 0;
    for (const char c : text) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}

bool SameValue(const Variant& a, const Variant& b) {
    if (a.Type() != b.Type()) return false;
    switch (a.Type()) {
        case VT_BOOL: return a.BoolValue() == b.BoolValue();
        case VT_I4: return a.I4() == b.I4();
        case VT_BSTR: return a.Bstr() == b.Bstr();
        default: return a.IsEmpty() && b.IsEmpty();
    }
}

// The size in points of a font whose height is in pixels at 96 per inch.
int32_t PointsOf(const LogicalFont& font) { return static_cast<int32_t>(std::abs(int64_t{font.height}) * 72 / 96); }

}  // namespace

struct ControlPropertySheet::Slot {
    const Field* field = nullptr;
    size_t page = 0;
    size_t index = 0;
    DISPID id = DISPID_UNKNOWN;
    Variant filled;  // the value as filled or last applied
    Variant value;   // the value the user sees now
};

const std::vector<ControlPropertySheet::Page>& ControlPropertySheet::Pages() {
    static const std::vector<Page> pages{GeneralPage(), ViewPage(), InfoPage(), AxisPage('X'), AxisPage('Y'),
                                         AxisPage('Z')};
    return pages;
}

ControlPropertySheet::ControlPropertySheet(ComPtr<IDispatch> control, MessageSink* sink,
                                           std::shared_ptr<SettingsStore> store)
    : control_(std::move(control)), sink_(sink), store_(std::move(store)) {
    const auto& pages = Pages();
    for (size_t p = 0; p < pages.size(); ++p) {
        for (size_t f = 0; f < pages[p].fields.size(); ++f) {
            Slot slot{&pages[p].fields[f], p, f, DISPID_UNKNOWN, {}, {}};
            const char* names[] = {slot.field->property.c_str()};
            if (control_ && FAILED(control_->GetIDsOfNames(GUID_NULL, names, 1, 0, &slot.id)))
                slot.id = DISPID_UNKNOWN;
            slots_.push_back(std::move(slot));
        }
    }
}

ControlPropertySheet::~ControlPropertySheet() = default;

// -- fill --

void ControlPropertySheet::Fill() {
    FillEngineList();
    for (Slot& slot : slots_) {
        if (slot.id == DISPID_UNKNOWN) continue;
        slot.value = ToEditValue(*slot.field, GetProperty(slot.id));
        slot.filled = slot.value;
    }
    // The stored background colour wins over the property when present.
    CRegistryKey key(sink_, store_);
    if (key.OpenExisting(RootKey::CurrentUser, CRegistryKey::kProductPath)) {
        // -1 is what a missing value reads as, and is no colour.
        if (const int32_t stored = key.ReadInt("Background color"); stored != -1) {
            if (Slot* slot = Find("BackgroundColor")) slot->value = slot->filled = Variant(stored);
        }
        // The selected engine is the one the store names.
        if (Slot* slot = Find("Engine")) {
            const std::string name = key.ReadString("EngineName");
            for (const std::string& e : engines_)
                if (e == name) slot->value = slot->filled = Variant(name);
        }
    }
    if (Slot* slot = Find("Engine"); slot && !engines_.empty()) {
        bool listed = false;
        for (const std::string& e : engines_) listed = listed || (slot->value.Type() == VT_BSTR && e == slot->value.Bstr());
        if (!listed) slot->value = slot->filled = Variant(std::string());
    }
    FillFont();
}

void ControlPropertySheet::FillEngineList() {
    engines_.clear();
    CRegistryKey key(sink_, store_);
    if (key.OpenExisting(RootKey::CurrentUser, std::string(CRegistryKey::kProductPath) + "\\Engine"))
        engines_ = key.ValueNames();
}

void ControlPropertySheet::FillFont() {
    fontChanged_ = false;
    font_ = LogicalFont{};
    font_.height = -11;
    CRegistryKey key(sink_, store_);
    LogFontRecord::Bytes record{};
    if (key.OpenExisting(RootKey::CurrentUser, CRegistryKey::kProductPath) &&
        key.ReadBinary("Font", record.data(), record.size()) == 1) {
        if (auto font = LogFontRecord::Decode(record)) font_ = *font;
    }
    // The property is the face the info window shows now.
    if (const Slot* slot = Find("InfoFont"); slot && slot->id != DISPID_UNKNOWN) {
        const Variant face = GetProperty(slot->id);
        if (face.Type() == VT_BSTR && !face.Bstr().empty()) font_.face = face.Bstr();
    }
    fontPoints_ = PointsOf(font_);
}

Variant ControlPropertySheet::ToEditValue(const Field& field, const Variant& property) const {
    Variant v;
    switch (field.kind) {
        case Kind::Check:
            return Variant::Bool(SUCCEEDED(property.ChangeType(VT_BOOL, &v)) && v.BoolValue());
        case Kind::Colour:
        case Kind::List:
        case Kind::Radio:
            return Variant(SUCCEEDED(property.ChangeType(VT_I4, &v)) ? v.I4() : 0);
        case Kind::Real:
            return Variant(SUCCEEDED(property.ChangeType(VT_R8, &v)) ? FormatNumber(v.R8()) : std::string());
        case Kind::Integer:
            return Variant(SUCCEEDED(property.ChangeType(VT_I4, &v)) ? std::to_string(v.I4()) : std::string());
        case Kind::Engine:
        case Kind::Text:
            return Variant(property.Type() == VT_BSTR ? property.Bstr() : std::string());
        case Kind::Font: return Variant();
    }
    return Variant();
}

// -- values --

ControlPropertySheet::Slot* ControlPropertySheet::Find(std::string_view property) {
    for (Slot& s : slots_)
        if (s.field->property == property) return &s;
    return nullptr;
}

const ControlPropertySheet::Slot* ControlPropertySheet::Find(std::string_view property) const {
    for (const Slot& s : slots_)
        if (s.field->property == property) return &s;
    return nullptr;
}

Variant ControlPropertySheet::Value(std::string_view property) const {
    const Slot* slot = Find(property);
    return slot ? slot->value : Variant();
}

void ControlPropertySheet::SetValue(std::string_view property, Variant value) {
    Slot* slot = Find(property);
    if (!slot || slot->id == DISPID_UNKNOWN || slot->field->kind == Kind::Font) return;
    // The value keeps the field's form: a check stays a bool, an edit text.
    const Variant form = slot->value.IsEmpty() ? ToEditValue(*slot->field, Variant()) : slot->value;
    Variant converted;
    if (FAILED(value.ChangeType(form.Type(), &converted))) return;
    slot->value = std::move(converted);
}

bool ControlPropertySheet::Bound(std::string_view property) const {
    const Slot* slot = Find(property);
    return slot && slot->id != DISPID_UNKNOWN;
}

bool ControlPropertySheet::Changed() const {
    if (fontChanged_) return true;
    for (const Slot& s : slots_)
        if (!SameValue(s.value, s.filled)) return true;
    return false;
}

// -- font --

const char* ControlPropertySheet::WeightName(int32_t weight) {
    switch (weight) {
        case 100: return "Thin";
        case 200: return "UltraLight";
        case 300: return "Light";
        case 400: return "Normal";
        case 500: return "Medium";
        case 600: return "SemiBold";
        case 700: return "Bold";
        case 800: return "ExtraBOLD";
        case 900: return "Heavy";
        default: return "";
    }
}

std::string ControlPropertySheet::Describe(const LogicalFont& font, int32_t points) {
    std::string style = WeightName(font.weight);
    if (font.italic) style += ", Italic";
    if (font.underline) style += ", Underline";
    if (font.strikeOut) style += ", StrikeOut";
    return font.face + ", " + std::to_string(points) + ", " + style;
}

void ControlPropertySheet::ChooseFont(const LogicalFont& font, int32_t points) {
    font_ = font;
    font_.face = LogFontRecord::CutFace(font.face, LogFontRecord::kFaceBytes);
    fontPoints_ = points;
    // Pixels at 96 per inch, negative: the character height, as the record keeps it.
    font_.height = -static_cast<int32_t>((int64_t{points} * 96 + 36) / 72);
    fontChanged_ = true;
}

void ControlPropertySheet::DefaultFont() {
    LogicalFont font;
    font.face = "Arial";
    font.weight = 400;
    ChooseFont(font, 8);
}

// -- validation --

std::optional<double> ControlPropertySheet::ParseNumber(std::string_view text) {
    std::istringstream in{std::string(text)};
    in.imbue(std::locale::classic());
    double value = 0;
    in >> std::ws >> value;
    if (in.fail()) return std::nullopt;
    in >> std::ws;
    if (!in.eof() || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::string ControlPropertySheet::Check(const Field& field, const Variant& value) {
    const std::string text = value.Type() == VT_BSTR ? value.Bstr() : std::string();
    switch (field.kind) {
        case Kind::Real: {
            const auto number = ParseNumber(text);
            if (!number) return "Please enter a number.";
            if (*number < field.min || *number > field.max)
                return "Please enter a number between " + FormatNumber(field.min) + " and " +
                       FormatNumber(field.max) + ".";
            return {};
        }
        case Kind::Integer: {
            const auto number = ParseNumber(text);
            if (!number || *number != std::floor(*number)) return "Please enter an integer.";
            if (*number < field.min || *number > field.max)
                return "Please enter an integer between " + FormatNumber(field.min) + " and " +
                       FormatNumber(field.max) + ".";
            return {};
        }
        case Kind::Text:
            if (CodePoints(text) > static_cast<size_t>(field.max))
                return "Please enter no more than " + FormatNumber(field.max) + " characters.";
            return {};
        case Kind::List:
        case Kind::Radio:
            if (value.Type() != VT_I4 || value.I4() < 0 || value.I4() >= static_cast<int32_t>(field.choices.size()))
                return "Please select one of the entries.";
            return {};
        default: return {};
    }
}

Variant ControlPropertySheet::ToPropertyValue(const Field& field, const Variant& value) {
    switch (field.kind) {
        case Kind::Real: return Variant(*ParseNumber(value.Bstr()));
        case Kind::Integer: return Variant(static_cast<int32_t>(*ParseNumber(value.Bstr())));
        default: return value;
    }
}

// -- apply --

std::optional<ControlPropertySheet::Problem> ControlPropertySheet::Apply() {
    for (const Slot& s : slots_) {
        if (s.id == DISPID_UNKNOWN || SameValue(s.value, s.filled)) continue;
        if (std::string message = Check(*s.field, s.value); !message.empty())
            return Problem{s.page, s.index, std::move(message)};
    }
    // The font record goes first: a store that cannot be written stops
    // the apply before any property changes.
    if (fontChanged_ && !StoreFont()) {
        const Slot* font = Find("InfoFont");
        return Problem{font ? font->page : 0, font ? font->index : 0,
                       "The font cannot be saved: the settings store cannot be written."};
    }
    for (Slot& s : slots_) {
        if (s.id == DISPID_UNKNOWN) continue;
        if (s.field->kind == Kind::Font) {
            if (fontChanged_) PutProperty(s.id, Variant(font_.face));
            continue;
        }
        if (SameValue(s.value, s.filled)) continue;
        // An engine list without entries selects nothing and writes nothing.
        if (s.field->kind == Kind::Engine && s.value.Bstr().empty()) continue;
        PutProperty(s.id, ToPropertyValue(*s.field, s.value));
        s.filled = s.value;
    }
    // The face property rewrote the record with the old size and style.
    if (fontChanged_) StoreFont();
    fontChanged_ = false;
    return std::nullopt;
}

bool ControlPropertySheet::StoreFont() {
    CRegistryKey key(sink_, store_);
    if (!key.Open("")) return false;
    const LogFontRecord::Bytes record = LogFontRecord::Encode(font_);
    return key.WriteBinary("Font", record.data(), record.size()) == 0;
}

Variant ControlPropertySheet::GetProperty(DISPID id) const {
    Variant result;
    DispParams none;
    ExcepInfo excep;
    uint32_t argErr = 0;
    if (FAILED(control_->Invoke(id, GUID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, &excep, &argErr)))
        return Variant();
    return result;
}

HRESULT ControlPropertySheet::PutProperty(DISPID id, Variant value) {
    DISPID named = DISPID_PROPERTYPUT;
    DispParams params{&value, &named, 1, 1};
    ExcepInfo excep;
    uint32_t argErr = 0;
    return control_->Invoke(id, GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, &excep, &argErr);
}

}  // namespace vexplot

#include "scene/surface/recording_surface.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <ostream>
#include <utility>

namespace glintara {
namespace {

constexpr double kTwipsPerPoint = 20;
constexpr double kCharacterWidth = 0.6;  // of the font size
constexpr double kLineHeight = 1.25;     // of the font size

std::size_t CharacterCount(std::string_view utf8) {
    // Every byte begins a character but those of the form 10xxxxxx.
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void AppendNumber(std::string& text, double value) {
    std::array<char, 32> room{};
    const char* const end = std::to_chars(room.data(), room.data() + room.size(), value).ptr;
    text += ' ';
    text.append(room.data(), static_cast<std::size_t>(end - room.data()));
}

void AppendColor(std::string& text, Color color) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    text += " 0x";
    for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[(color >> static_cast<unsigned>(shift)) & 0xF];
}

void AppendPen(std::string& text, const DrawState& state) {
    text += " pen";
    if (state.DrawStyle == PenPattern::None) {
        text += " none";
        return;
    }
    AppendColor(text, state.ForeColor);
    if (state.DrawStyle == PenPattern::Dotted) text += " dotted";
    text += " width";
    AppendNumber(text, state.DrawWidth);
}

void AppendFill(std::string& text, const DrawState& state) {
    text += " fill";
    if (state.FillStyle == FillPattern::Transparent)
        text += " none";
    else
        AppendColor(text, state.FillColor);
}

void AppendFont(std::string& text, const DrawState& state) {
    text += " at";
    AppendNumber(text, state.CurrentX);
    AppendNumber(text, state.CurrentY);
    text += " color";
    AppendColor(text, state.ForeColor);
    text += " font \"" + state.FontName + "\"";
    AppendNumber(text, state.FontSize);
    if (state.FontBold) text += " bold";
    if (state.FontItalic) text += " italic";
    if (state.FontOutlined) text += " outlined";
}

std::string_view NameOf(DrawOperation operation) {
    switch (operation) {
        case DrawOperation::Cls:
            return "Cls";
        case DrawOperation::Line:
            return "Line";
        case DrawOperation::Circle:
            return "Circle";
        case DrawOperation::PSet:
            return "PSet";
        case DrawOperation::Print:
            return "Print";
        case DrawOperation::Polygon:
            return "Polygon";
        case DrawOperation::ExtFloodFill:
            return "ExtFloodFill";
        case DrawOperation::AlphaBlend:
            return "AlphaBlend";
        case DrawOperation::PolyPolygon:
            return "PolyPolygon";
        case DrawOperation::Polyline:
            return "Polyline";
        case DrawOperation::CoverRow:
            return "CoverRow";
        case DrawOperation::StarDot:
            return "StarDot";
    }
    return "";
}

void AppendState(std::string& text, DrawOperation operation, const DrawState& state) {
    switch (operation) {
        case DrawOperation::Cls:
            text += " color";
            AppendColor(text, state.BackColor);
            return;
        case DrawOperation::Line:
        case DrawOperation::PSet:
        case DrawOperation::Polyline:
            AppendPen(text, state);
            break;
        case DrawOperation::Circle:
        case DrawOperation::Polygon:
            AppendPen(text, state);
            AppendFill(text, state);
            break;
        case DrawOperation::PolyPolygon:
        case DrawOperation::ExtFloodFill:
        case DrawOperation::CoverRow:
            AppendFill(text, state);
            break;
        case DrawOperation::Print:
            AppendFont(text, state);
            break;
        case DrawOperation::AlphaBlend:
        case DrawOperation::StarDot:
            return;
    }
    if (state.DrawMode == MixMode::Mask) text += " mask";
}

}  // namespace

std::string OperationText(const RecordedOperation& operation) {
    std::string text(NameOf(operation.operation));
    if (operation.operation == DrawOperation::Print) text += " \"" + operation.text + "\"";
    for (const double number : operation.numbers) AppendNumber(text, number);
    if (!operation.contourEnds.empty()) text += " ends";
    for (const std::int32_t end : operation.contourEnds) AppendNumber(text, end);
    AppendState(text, operation.operation, operation.state);
    return text;
}

void PrintTo(const RecordedOperation& operation, std::ostream* stream) { *stream << OperationText(operation); }

RecordingSurface::RecordingSurface(double width, double height) {
    ScaleWidth = width;
    ScaleHeight = height;
}

RecordedOperation& RecordingSurface::Record(DrawOperation kind, std::vector<double> numbers) {
    return operations_.emplace_back(
        RecordedOperation{kind, static_cast<const DrawState&>(*this), std::move(numbers), {}, {}});
}

void RecordingSurface::Cls() {
    Record(DrawOperation::Cls, {});
    CurrentX = 0;
    CurrentY = 0;
}

void RecordingSurface::Line(double x1, double y1, double x2, double y2) {
    Record(DrawOperation::Line, {x1, y1, x2, y2});
}

void RecordingSurface::Circle(double x, double y, double radius) { Record(DrawOperation::Circle, {x, y, radius}); }

void RecordingSurface::PSet(double x, double y) { Record(DrawOperation::PSet, {x, y}); }

void RecordingSurface::Print(std::string_view text) {
    Record(DrawOperation::Print, {}).text = text;
    CurrentX += TextWidth(text);
}

double RecordingSurface::TextWidth(std::string_view text) const {
    return static_cast<double>(CharacterCount(text)) * kCharacterWidth * FontSize * kTwipsPerPoint;
}

double RecordingSurface::TextHeight(std::string_view) const { return kLineHeight * FontSize * kTwipsPerPoint; }

void RecordingSurface::Polygon(std::span<const PixelVertex> vertices) {
    std::vector<double> numbers;
    numbers.reserve(2 * vertices.size());
    for (const PixelVertex& vertex : vertices) {
        numbers.push_back(vertex.x);
        numbers.push_back(vertex.y);
    }
    Record(DrawOperation::Polygon, std::move(numbers));
}

void RecordingSurface::ExtFloodFill(std::int32_t x, std::int32_t y, Color color, FloodFillMode mode) {
    Record(DrawOperation::ExtFloodFill, {static_cast<double>(x), static_cast<double>(y), static_cast<double>(color),
                                         static_cast<double>(static_cast<int>(mode))});
}

void RecordingSurface::AlphaBlend(const PixelRectangle& target, const DrawSurface&, const PixelRectangle& part,
                                  std::uint8_t weight) {
    std::vector<double> numbers;
    for (const PixelRectangle& r : {target, part})
        for (const std::int32_t number : {r.left, r.top, r.width, r.height}) numbers.push_back(number);
    numbers.push_back(weight);
    Record(DrawOperation::AlphaBlend, std::move(numbers));
}

void RecordingSurface::PolyPolygon(std::span<const double> xy, std::span<const std::int32_t> contourEnds) {
    Record(DrawOperation::PolyPolygon, {xy.begin(), xy.end()})
        .contourEnds.assign(contourEnds.begin(), contourEnds.end());
}

void RecordingSurface::Polyline(std::span<const double> xy) { Record(DrawOperation::Polyline, {xy.begin(), xy.end()}); }

void RecordingSurface::CoverRow(std::int32_t x, std::int32_t y, std::span<const std::uint8_t> coverage) {
    std::vector<double> numbers{static_cast<double>(x), static_cast<double>(y)};
    numbers.insert(numbers.end(), coverage.begin(), coverage.end());
    Record(DrawOperation::CoverRow, std::move(numbers));
}

void RecordingSurface::StarDot(double x, double y, double radius, Color color, double weight) {
    Record(DrawOperation::StarDot, {x, y, radius, static_cast<double>(color), weight});
}

std::vector<RecordedOperation> RecordingSurface::OperationsOf(DrawOperation kind) const {
    std::vector<RecordedOperation> found;
    std::copy_if(operations_.begin(), operations_.end(), std::back_inserter(found),
                 [kind](const RecordedOperation& operation) { return operation.operation == kind; });
    return found;
}

std::string RecordingSurface::Text() const {
    std::string text;
    for (const RecordedOperation& operation : operations_) text += OperationText(operation) + "\n";
    return text;
}

}  // namespace glintara

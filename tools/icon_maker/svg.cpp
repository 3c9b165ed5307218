// svg.cpp -- reads the part of SVG that icon sources are written in.
#include <cmath>
#include <cstdlib>
#include <map>

#include "tools/icon_maker/icon_maker.h"

namespace {

using Attributes = std::map<std::string, std::string, std::less<>>;

struct Element {
    std::string name;
    Attributes attributes;
};

bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

// The next element; false at the end. Closing tags and comments are passed over.
bool NextElement(std::string_view source, size_t& at, Element& element) {
    for (;;) {
        at = source.find('<', at);
        if (at == source.npos) return false;
        if (source.substr(at, 4) == "<!--") {
            at = source.find("-->", at);
            continue;
        }
        const size_t end = source.find('>', at);
        if (end == source.npos) return false;
        const std::string_view tag = source.substr(at + 1, end - at - 1);
        at = end;
        if (tag.empty() || tag[0] == '/' || tag[0] == '?') continue;
        size_t i = 0;
        while (i < tag.size() && !IsBlank(tag[i]) && tag[i] != '/') ++i;
        element = {std::string(tag.substr(0, i)), {}};
        for (size_t equals; (equals = tag.find("=\"", i)) != tag.npos;) {
            while (IsBlank(tag[i])) ++i;
            const size_t close = tag.find('"', equals + 2);
            if (close == tag.npos) break;
            element.attributes[std::string(tag.substr(i, equals - i))] = tag.substr(equals + 2, close - equals - 2);
            i = close + 1;
        }
        return true;
    }
}

double Number(const Element& element, const char* name, double missing = 0) {
    const auto found = element.attributes.find(name);
    return found == element.attributes.end() ? missing : std::strtod(found->second.c_str(), nullptr);
}

// Letters stand alone, numbers are what lies between blanks, commas and letters.
struct PathText {
    const char* at;
    bool More() {
        while (IsBlank(*at) || *at == ',') ++at;
        return *at != 0;
    }
    bool LetterNext() { return More() && std::isalpha(static_cast<unsigned char>(*at)); }
    double Value() {
        More();
        char* end;
        const double value = std::strtod(at, &end);
        at = end > at ? end : at + (*at != 0);
        return value;
    }
};

void AddCurve(std::vector<IconPoint>& outline, IconPoint b, IconPoint c, IconPoint d) {
    constexpr int pieces = 16;
    const IconPoint a = outline.back();
    for (int i = 1; i <= pieces; ++i) {
        const double t = double(i) / pieces, u = 1 - t;
        const double wa = u * u * u, wb = 3 * u * u * t, wc = 3 * u * t * t, wd = t * t * t;
        outline.push_back({wa * a.x + wb * b.x + wc * c.x + wd * d.x, wa * a.y + wb * b.y + wc * c.y + wd * d.y});
    }
}

bool AddPath(const std::string& text, IconShape& shape) {
    PathText path{text.c_str()};
    char command = 'M';
    while (path.More()) {
        if (path.LetterNext()) command = *path.at++;
        if (command != 'M' && shape.outlines.empty()) return false;
        auto* outline = shape.outlines.empty() ? nullptr : &shape.outlines.back();
        switch (command) {
            case 'M': {
                const double x = path.Value(), y = path.Value();
                shape.outlines.push_back({{x, y}});
                command = 'L';  // further pairs are lines
                break;
            }
            case 'L': {
                const double x = path.Value(), y = path.Value();
                outline->push_back({x, y});
                break;
            }
            case 'H': outline->push_back({path.Value(), outline->back().y}); break;
            case 'V': outline->push_back({outline->back().x, path.Value()}); break;
            case 'C': {
                IconPoint p[3];
                for (IconPoint& point : p) {
                    point.x = path.Value();
                    point.y = path.Value();
                }
                AddCurve(*outline, p[0], p[1], p[2]);
                break;
            }
            case 'Z': outline->push_back(outline->front()); break;
            default: return false;
        }
    }
    return true;
}

void AddEllipseArc(std::vector<IconPoint>& outline, double cx, double cy, double r, double from, double to) {
    constexpr double step = 3.14159265358979323846 / 32;
    const int pieces = static_cast<int>(std::lround((to - from) / step));
    for (int i = 0; i <= pieces; ++i) {
        const double angle = from + i * step;
        outline.push_back({cx + r * std::cos(angle), cy + r * std::sin(angle)});
    }
}

void AddRect(const Element& e, IconShape& shape) {
    const double x = Number(e, "x"), y = Number(e, "y"), w = Number(e, "width"), h = Number(e, "height"), r = Number(e, "rx");
    constexpr double quarter = 3.14159265358979323846 / 2;
    const IconPoint centres[] = {{x + w - r, y + h - r}, {x + r, y + h - r}, {x + r, y + r}, {x + w - r, y + r}};
    std::vector<IconPoint> outline;
    for (int i = 0; i < 4; ++i) AddEllipseArc(outline, centres[i].x, centres[i].y, r, i * quarter, (i + 1) * quarter);
    outline.push_back(outline.front());
    shape.outlines.push_back(outline);
}

bool AddOutlines(const Element& e, IconShape& shape) {
    const auto text = [&](const char* name) {
        const auto found = e.attributes.find(name);
        return found == e.attributes.end() ? std::string() : found->second;
    };
    if (e.name == "path") return AddPath(text("d"), shape);
    if (e.name == "polyline") return AddPath("M" + text("points"), shape);
    if (e.name == "polygon") return AddPath("M" + text("points") + "Z", shape);
    if (e.name == "rect") {
        AddRect(e, shape);
    } else if (e.name == "circle") {
        shape.outlines.emplace_back();
        AddEllipseArc(shape.outlines.back(), Number(e, "cx"), Number(e, "cy"), Number(e, "r"), 0, 2 * 3.14159265358979323846);
    } else if (e.name == "line") {
        shape.outlines.push_back({{Number(e, "x1"), Number(e, "y1")}, {Number(e, "x2"), Number(e, "y2")}});
    } else {
        return false;
    }
    return true;
}

int64_t ColorOf(const Element& element, const char* name, int64_t missing) {
    const auto found = element.attributes.find(name);
    if (found == element.attributes.end()) return missing;
    if (found->second.size() != 7 || found->second[0] != '#') return -1;  // none
    return std::strtol(found->second.c_str() + 1, nullptr, 16);
}

}  // namespace

int ParseIcon(std::string_view source, IconDrawing& drawing, std::string& message) {
    drawing = {};
    Element element;
    for (size_t at = 0; NextElement(source, at, element);) {
        if (element.name == "svg") {
            const auto box = element.attributes.find("viewBox");  // "0 0 size size"
            if (box != element.attributes.end()) drawing.size = std::strtod(box->second.c_str() + 4, nullptr);
            continue;
        }
        IconShape shape;
        if (!AddOutlines(element, shape)) {
            message = "cannot draw <" + element.name + ">";
            return 1;
        }
        shape.fill        = ColorOf(element, "fill", 0);
        shape.stroke      = ColorOf(element, "stroke", -1);
        shape.strokeWidth = Number(element, "stroke-width", 1);
        shape.opacity     = Number(element, "opacity", 1);
        drawing.shapes.push_back(shape);
    }
    if (!drawing.shapes.empty() && drawing.size > 0) return 0;
    message = "nothing to draw";
    return 1;
}

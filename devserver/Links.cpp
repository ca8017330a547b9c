#include "Links.h"

#include <fmt/format.h>

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

#include "AdPaths.h"

namespace devserver {
namespace {

/// A button of a right.
struct Use {
    std::string button;
    const RightDisplay* right = nullptr;
};

struct LinkEntry {
    Link link;
    std::vector<Use> uses;
};

std::map<int64_t, LinkEntry> Links(const CScenario& scenario) {
    std::map<int64_t, LinkEntry> entries;
    for (const Link& link : scenario.Links()) {
        entries[link.id()].link = link;
    }
    for (const RightDisplay& right : scenario.Rights()) {
        const RightLinks& links = right.links();
        const RightText& text = right.texts().en();
        for (const auto& [id, button] :
             {std::pair(links.mainbtn(), text.mainbtn()), std::pair(links.detailbtn(), text.detailbtn()),
              std::pair(links.detailsubbtn(), text.detailsubbtn())}) {
            if (id > 0) {
                entries[id].uses.push_back({button, &right});
            }
        }
    }
    return entries;
}

std::string Escaped(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped().toStdString();
}

}  // namespace

std::string WithOrigin(std::string text, const std::string& origin) {
    constexpr const char* kServer = "{server}";
    const size_t size = std::char_traits<char>::length(kServer);
    for (size_t at = text.find(kServer); at != std::string::npos; at = text.find(kServer, at + origin.size())) {
        text.replace(at, size, origin);
    }
    return text;
}

Json::Value LinkTable(const CScenario& scenario, const std::string& origin) {
    Json::Value table(Json::objectValue);
    for (const auto& [id, entry] : Links(scenario)) {
        const std::string url =
            entry.link.has_url() ? WithOrigin(entry.link.url(), origin) : origin + kLinkPath + std::to_string(id);
        if (!url.empty()) {
            table[std::to_string(id)] = url;
        }
    }
    return table;
}

std::optional<std::string> LinkPage(const CScenario& scenario, int64_t id) {
    const auto entries = Links(scenario);
    const auto found = entries.find(id);
    if (found == entries.end()) {
        return std::nullopt;
    }
    const LinkEntry& entry = found->second;
    const std::string title =
        Escaped(entry.link.has_title() || entry.uses.empty() ? entry.link.title() : entry.uses.front().button);
    std::string text;
    const QStringList lines = QString::fromStdString(entry.link.text()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        text += fmt::format(FMT_STRING("<p>{}</p>\n"), Escaped(line.toStdString()));
    }
    std::string uses;
    for (const Use& use : entry.uses) {
        uses += fmt::format(FMT_STRING("<li>{}: {} (right {})</li>\n"), Escaped(use.right->texts().en().maintitle()),
                            Escaped(use.button), use.right->access());
    }
    return fmt::format(FMT_STRING("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                                  "<meta name=\"viewport\" content=\"width=device-width\">\n"
                                  "<title>{0} {1}</title>\n"
                                  "<style>body {{ font: 16px sans-serif; margin: 24px; }}</style>\n</head>\n<body>\n"
                                  "<h1>{1}</h1>\n{3}<p>Link {0}</p>\n<ul>\n{2}</ul>\n</body>\n</html>\n"),
                       id, title, uses, text);
}

}  // namespace devserver

#include "configuration.h"

#include "text.h"

#include <cstdlib>
#include <cstring>

namespace telsim {

namespace {

struct Word {
    const char* name;
    DWORD value;
};

constexpr Word kBearerModes[] = {
    {"voice", LINEBEARERMODE_VOICE},
    {"speech", LINEBEARERMODE_SPEECH},
    {"data", LINEBEARERMODE_DATA},
    {"passthrough", LINEBEARERMODE_PASSTHROUGH},
};
constexpr Word kMediaModes[] = {
    {"unknown", LINEMEDIAMODE_UNKNOWN},
    {"interactivevoice", LINEMEDIAMODE_INTERACTIVEVOICE},
    {"automatedvoice", LINEMEDIAMODE_AUTOMATEDVOICE},
    {"datamodem", LINEMEDIAMODE_DATAMODEM},
    {"g3fax", LINEMEDIAMODE_G3FAX},
};
constexpr Word kLineFeatures[] = {{"makecall", LINEFEATURE_MAKECALL}};
constexpr Word kAddressFeatures[] = {{"makecall", LINEADDRFEATURE_MAKECALL}};
constexpr Word kStringFormats[] = {
    {"ascii", STRINGFORMAT_ASCII}, {"dbcs", STRINGFORMAT_DBCS}, {"unicode", STRINGFORMAT_UNICODE}};
constexpr Word kVersions[] = {{"1.0", 0x00010000}, {"1.3", 0x00010003}, {"1.4", 0x00010004}};

bool ParseNumber(const std::string& text, DWORD& number)
{
    char* end = nullptr;
    const unsigned long parsed = std::strtoul(text.c_str(), &end, 0);
    if (text.empty() || *end != '\0')
        return false;
    number = parsed;
    return true;
}

bool ParseFlag(const std::string& text, bool& flag)
{
    DWORD number = 0;
    if (!ParseNumber(text, number) || number > 1)
        return false;
    flag = number != 0;
    return true;
}

/// Words of a table, between blanks or commas, or numbers; their values are joined.
template <size_t COUNT> bool ParseWords(const std::string& text, const Word (&words)[COUNT], DWORD& value)
{
    DWORD joined = 0;
    for (size_t begin = text.find_first_not_of(" ,"); begin != std::string::npos;) {
        const size_t end = text.find_first_of(" ,", begin);
        const std::string word = text.substr(begin, end == std::string::npos ? end : end - begin);
        DWORD one = 0;
        bool known = false;
        for (const Word& entry : words) {
            if (lstrcmpiA(word.c_str(), entry.name) == 0) {
                one = entry.value;
                known = true;
            }
        }
        if (!known && !ParseNumber(word, one))
            return false;
        joined |= one;
        begin = text.find_first_not_of(" ,", end);
    }
    value = joined;
    return true;
}

/// "1.3-1.4"
bool ParseVersions(const std::string& text, DWORD& low, DWORD& high)
{
    const size_t dash = text.find('-');
    return dash != std::string::npos && ParseWords(text.substr(0, dash), kVersions, low) &&
           ParseWords(text.substr(dash + 1), kVersions, high) && low <= high && low >= kLowestVersion &&
           high <= kHighestVersion;
}

bool SetIncomingKey(IncomingCall& call, const std::string& key, const std::string& value)
{
    bool blocked = false;
    if (key == "line")
        return ParseNumber(value, call.device);
    if (key == "after")
        return ParseNumber(value, call.after);
    if (key == "hangup")
        return ParseNumber(value, call.hangUpAfter);
    if (key == "blocked") {
        if (!ParseFlag(value, blocked))
            return false;
        call.partyFlags = blocked ? LINECALLPARTYID_BLOCKED : 0;
        return true;
    }
    if (key != "number" && key != "name")
        return false;
    (key == "number" ? call.number : call.name) = value;
    return true;
}

bool SetLocationKey(Location& location, const std::string& key, const std::string& value)
{
    if (key == "country")
        return ParseNumber(value, location.country) && location.country != 0;
    if (key == "tone")
        return ParseFlag(value, location.tone);
    const struct {
        const char* key;
        std::string& text;
    } texts[] = {
        {"area", location.areaCode},
        {"outside", location.outsidePrefix},
        {"longdistance", location.longDistancePrefix},
        {"international", location.internationalPrefix},
        {"cancelcallwaiting", location.cancelCallWaiting},
    };
    for (const auto& entry : texts) {
        if (key == entry.key) {
            entry.text = value;
            return true;
        }
    }
    return false;
}

/// TELSIM_INI, or telsim.ini beside this library.
std::string ConfigurationPath()
{
    char path[MAX_PATH] = "";
    const DWORD length = GetEnvironmentVariableA("TELSIM_INI", path, sizeof path);
    if (length != 0 && length < sizeof path)
        return path;
    MEMORY_BASIC_INFORMATION memory = {};
    VirtualQuery(reinterpret_cast<const void*>(&ConfigurationPath), &memory, sizeof memory);
    GetModuleFileNameA(static_cast<HMODULE>(memory.AllocationBase), path, sizeof path - 1);
    std::string folder = path;
    folder.resize(folder.rfind('\\') + 1);
    return folder + "telsim.ini";
}

/// The lines "key=value" of a section, keys in small letters.
std::vector<std::pair<std::string, std::string>> ReadSection(const std::string& path, const std::string& section)
{
    std::vector<char> buffer(32768);
    GetPrivateProfileSectionA(section.c_str(), buffer.data(), static_cast<DWORD>(buffer.size()), path.c_str());
    std::vector<std::pair<std::string, std::string>> entries;
    for (const char* line = buffer.data(); *line != '\0'; line += std::strlen(line) + 1) {
        const std::string text = line;
        const size_t equals = text.find('=');
        if (text[0] == ';' || equals == std::string::npos)
            continue;
        std::string key = text.substr(0, text.find_last_not_of(' ', equals - 1) + 1);
        CharLowerBuffA(key.data(), static_cast<DWORD>(key.size()));
        const size_t begin = text.find_first_not_of(' ', equals + 1);
        entries.emplace_back(key, begin == std::string::npos ? "" : text.substr(begin));
    }
    return entries;
}

} // namespace

LineConfiguration DefaultLine(size_t device)
{
    LineConfiguration line;
    line.name = Format("Simulated Modem %u", static_cast<unsigned>(device + 1));
    line.registryKey += Format("\\%04u", static_cast<unsigned>(device));
    line.number = Format("55501%02u", static_cast<unsigned>(device % 100));
    line.settings = Format("Settings of device %u", static_cast<unsigned>(device));
    return line;
}

bool SetLineKey(LineConfiguration& line, const std::string& key, const std::string& value)
{
    if (key == "bearer")
        return ParseWords(value, kBearerModes, line.bearerModes);
    if (key == "media")
        return ParseWords(value, kMediaModes, line.mediaModes);
    if (key == "features")
        return ParseWords(value, kLineFeatures, line.lineFeatures);
    if (key == "addressfeatures")
        return ParseWords(value, kAddressFeatures, line.addressFeatures);
    if (key == "format")
        return ParseWords(value, kStringFormats, line.stringFormat);
    if (key == "versions")
        return ParseVersions(value, line.lowVersion, line.highVersion);
    if (key == "allocated")
        return ParseFlag(value, line.allocated);
    if (key == "reply")
        return ParseNumber(value, line.replyDelay);
    if (key == "dialtone")
        return ParseNumber(value, line.dialtoneDelay);
    if (key == "connect")
        return ParseNumber(value, line.connectDelay);
    const struct {
        const char* key;
        std::string& text;
    } texts[] = {
        {"name", line.name}, {"key", line.registryKey},   {"number", line.number},
        {"port", line.port}, {"settings", line.settings},
    };
    for (const auto& entry : texts) {
        if (key == entry.key) {
            entry.text = value;
            return true;
        }
    }
    return false;
}

Configuration LoadConfiguration(std::vector<std::string>& complaints)
{
    Configuration configuration;
    const std::string path = ConfigurationPath();
    if (GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        configuration.lines = {DefaultLine(0), DefaultLine(1)};
        configuration.lines[0].port = "COM99";
        return configuration;
    }
    const auto read = [&](const std::string& section, const auto& setKey) {
        const auto entries = ReadSection(path, section);
        for (const auto& [key, value] : entries) {
            if (!setKey(key, value))
                complaints.push_back(Format("telsim.ini: [%s] %s=%s", section.c_str(), key.c_str(), value.c_str()));
        }
        return !entries.empty();
    };
    read("telsim", [&](const std::string& key, const std::string& value) {
        return key == "dialogs" && ParseFlag(value, configuration.showDialogs);
    });
    read("location", [&](const std::string& key, const std::string& value) {
        return SetLocationKey(configuration.location, key, value);
    });
    // Sections are numbered from 0 without a gap.
    for (;;) {
        LineConfiguration line = DefaultLine(configuration.lines.size());
        if (!read(Format("line%u", static_cast<unsigned>(configuration.lines.size())),
                  [&](const std::string& key, const std::string& value) { return SetLineKey(line, key, value); }))
            break;
        configuration.lines.push_back(line);
    }
    for (;;) {
        IncomingCall call;
        if (!read(Format("call%u", static_cast<unsigned>(configuration.incomingCalls.size())),
                  [&](const std::string& key, const std::string& value) { return SetIncomingKey(call, key, value); }))
            break;
        configuration.incomingCalls.push_back(call);
    }
    return configuration;
}

} // namespace telsim

#include "analysis/Fix.h"

#include "adapters/common/Paths.h"
#include "analysis/Arrange.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace corvane::check {

namespace fs = std::filesystem;

namespace {

// How much there is to find: an error more than any number of warnings.
std::size_t WeightOf(const std::vector<Finding>& findings) {
    constexpr std::size_t error = 1000000;
    constexpr std::size_t warning = 1000;
    std::size_t weight = 0;
    for (const Finding& finding : findings) {
        const Severity severity = TextOf(finding.rule).severity;
        weight += severity == Severity::Error ? error : severity == Severity::Warning ? warning : 1;
    }
    return weight;
}

class Fixer {
public:
    explicit Fixer(const Options& options) : m_options(options) {
        m_options.plugins = options.plugins;
        m_findings = Check(m_options);
    }

    Fixes Run() {
        constexpr int mostRounds = 20;
        for (int round = 0; round < mostRounds && Round(); ++round) {
        }
        Fixes fixes;
        for (const auto& [path, before] : m_before)
            if (m_options.buffers.at(path) != before)
                fixes.files.push_back({path, before, m_options.buffers.at(path)});
        fixes.left = std::move(m_findings);
        return fixes;
    }

private:
    // All at once where that is better, else one after the other. Whether anything has changed.
    bool Round() {
        if (ArrangeMenus())
            return true;
        std::vector<std::vector<Edit>> cures;
        for (const Finding& finding : m_findings)
            if (!finding.edits.empty())
                cures.push_back(finding.edits);
        if (cures.empty())
            return false;
        std::vector<Edit> all;
        for (const auto& edits : cures)
            all.insert(all.end(), edits.begin(), edits.end());
        if (Try(all))
            return true;
        return std::any_of(cures.begin(), cures.end(), [&](const auto& edits) { return Try(edits); });
    }

    // Entries that vanish, share a place or come before others by accident get the order that the numbers of their
    // menus ask for, all at once.
    bool ArrangeMenus() {
        const std::string outline = MeantOutlineOf(MenusToArrange());
        if (outline.empty())
            return false;
        try {
            Options options = m_options;
            std::map<std::string, std::string> before;
            for (const FixedFile& file : Arrange(m_options, outline, {})) {
                before.emplace(file.path, file.before);
                options.buffers[file.path] = file.after;
            }
            if (before.empty() || !Take(std::move(options)))
                return false;
            m_before.merge(before);
            return true;
        } catch (const Failure&) {
            return false; // the numbers of other menus are in the way: one after the other, then
        }
    }

    // By their headings.
    [[nodiscard]] std::set<std::string> MenusToArrange() const {
        std::set<std::string> menus;
        std::vector<OutlineLine> lines;
        for (const Finding& finding : m_findings) {
            if (finding.rule != Rule::VanishingEntry && finding.rule != Rule::SharedPosition &&
                finding.rule != Rule::SubmenuOrder)
                continue;
            if (lines.empty())
                lines = OutlineLines(m_options);
            for (const OutlineLine& line : lines)
                if (line.IsAt(finding.place))
                    menus.insert(line.heading);
        }
        return menus;
    }

    [[nodiscard]] std::string MeantOutlineOf(const std::set<std::string>& menus) const {
        std::string outline;
        if (menus.empty())
            return outline;
        std::istringstream stream(MeantOutline(m_options));
        bool isWanted = false;
        for (std::string line; std::getline(stream, line);) {
            if (!line.starts_with(' '))
                isWanted = menus.contains(line);
            if (isWanted)
                outline += line + "\n";
        }
        return outline;
    }

    bool Try(const std::vector<Edit>& edits) {
        Options options = m_options;
        std::map<std::string, std::vector<Edit>> byFile;
        for (const Edit& edit : edits)
            byFile[edit.path].push_back(edit);
        for (const auto& [path, ofFile] : byFile) {
            const auto text = TextOfFile(path);
            if (!text)
                return false;
            options.buffers[path] = Edited(*text, ofFile);
        }
        return Take(std::move(options));
    }

    // When there is less to find with these texts.
    bool Take(Options options) {
        std::vector<Finding> findings = Check(options);
        if (WeightOf(findings) >= WeightOf(m_findings))
            return false;
        m_options = std::move(options);
        m_findings = std::move(findings);
        return true;
    }

    std::optional<std::string> TextOfFile(const std::string& path) {
        if (const auto buffer = m_options.buffers.find(path); buffer != m_options.buffers.end()) {
            m_before.emplace(path, buffer->second);
            return buffer->second;
        }
        auto text = ReadBytes(path);
        if (text)
            m_before.emplace(path, *text);
        return text;
    }

    Options m_options;
    std::map<std::string, std::string> m_before;
    std::vector<Finding> m_findings;
};

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

// The longest common sequence of the lines between begin and end of both, as pairs of their numbers.
class Comparison {
public:
    using Lines = std::vector<std::string_view>;

    struct Step {
        char sign; // ' ' for a line of both, '-' or '+'
        std::size_t before;
        std::size_t after;
    };

    static std::vector<Step> Of(const Lines& before, const Lines& after) {
        std::size_t begin = 0;
        while (begin < before.size() && begin < after.size() && before[begin] == after[begin])
            ++begin;
        std::size_t end = 0;
        while (end < before.size() - begin && end < after.size() - begin &&
               before[before.size() - 1 - end] == after[after.size() - 1 - end])
            ++end;
        std::vector<Step> steps;
        for (std::size_t i = 0; i < begin; ++i)
            steps.push_back({' ', i, i});
        Middle(before, after, begin, end, steps);
        for (std::size_t i = end; i > 0; --i)
            steps.push_back({' ', before.size() - i, after.size() - i});
        return steps;
    }

private:
    static void Middle(const Lines& before, const Lines& after, std::size_t begin, std::size_t end,
                       std::vector<Step>& steps) {
        const std::size_t rows = before.size() - begin - end;
        const std::size_t columns = after.size() - begin - end;
        constexpr std::size_t largest = 16000000;
        std::size_t i = 0;
        std::size_t j = 0;
        if (rows * columns <= largest) {
            // How many lines are common behind each pair.
            std::vector<std::vector<unsigned>> common(rows + 1, std::vector<unsigned>(columns + 1));
            for (std::size_t row = rows; row-- > 0;)
                for (std::size_t column = columns; column-- > 0;)
                    common[row][column] = before[begin + row] == after[begin + column]
                                              ? common[row + 1][column + 1] + 1
                                              : std::max(common[row + 1][column], common[row][column + 1]);
            while (i < rows && j < columns) {
                if (before[begin + i] == after[begin + j])
                    steps.push_back({' ', begin + i++, begin + j++});
                else if (common[i + 1][j] >= common[i][j + 1])
                    steps.push_back({'-', begin + i++, begin + j});
                else
                    steps.push_back({'+', begin + i, begin + j++});
            }
        }
        for (; i < rows; ++i)
            steps.push_back({'-', begin + i, begin + j});
        for (; j < columns; ++j)
            steps.push_back({'+', begin + i, begin + j});
    }
};

} // namespace

void WriteWhole(const std::string& path, const std::string& text) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (!stream)
        Fail(FailureNumber::FileAccess, "The file \"" + path + "\" can't be written: " + std::strerror(errno));
}

Fixes Fix(const Options& options) {
    return Fixer(options).Run();
}

std::string Edited(const std::string& text, std::vector<Edit> edits) {
    std::stable_sort(edits.begin(), edits.end(), [](const Edit& first, const Edit& second) {
        return first.begin != second.begin ? first.begin < second.begin : first.end < second.end;
    });
    std::string result;
    std::size_t at = 0;
    const Edit* last = nullptr;
    for (const Edit& edit : edits) {
        if (edit.begin < at || edit.end > text.size() || (last && *last == edit))
            continue;
        result.append(text, at, edit.begin - at).append(edit.text);
        at = edit.end;
        last = &edit;
    }
    return result.append(text, at);
}

std::string AsDiff(const FixedFile& file) {
    constexpr std::size_t around = 3;
    const auto before = LinesOf(file.before);
    const auto after = LinesOf(file.after);
    const auto steps = Comparison::Of(before, after);
    std::string diff;
    for (std::size_t i = 0; i < steps.size();) {
        if (steps[i].sign == ' ') {
            ++i;
            continue;
        }
        std::size_t begin = i - std::min(i, around);
        std::size_t end = i;
        for (std::size_t same = 0; end < steps.size() && same <= 2 * around; ++end)
            same = steps[end].sign == ' ' ? same + 1 : 0;
        while (end > i && steps[end - 1].sign == ' ')
            --end;
        const std::size_t last = std::min(end + around, steps.size());
        std::string hunk;
        std::size_t removed = 0;
        std::size_t added = 0;
        for (std::size_t k = begin; k < last; ++k) {
            const auto& step = steps[k];
            removed += step.sign != '+';
            added += step.sign != '-';
            const std::string_view line = step.sign == '+' ? after[step.after] : before[step.before];
            (hunk += step.sign).append(line);
            if (!line.ends_with('\n'))
                hunk += "\n\\ No newline at end of file\n";
        }
        diff += "@@ -" + std::to_string(steps[begin].before + 1) + "," + std::to_string(removed) + " +" +
                std::to_string(steps[begin].after + 1) + "," + std::to_string(added) + " @@\n" + hunk;
        i = last;
    }
    return diff.empty() ? diff : "--- " + file.path + "\n+++ " + file.path + "\n" + diff;
}

void WriteFixed(const FixedFile& file) {
    std::string backup = file.path + ".bak";
    for (int number = 2; fs::exists(backup); ++number)
        backup = file.path + ".bak" + std::to_string(number);
    WriteWhole(backup, file.before);
    try {
        ReplaceFile(file);
    } catch (...) {
        std::error_code error;
        fs::remove(backup, error);
        throw;
    }
}

void ReplaceFile(const FixedFile& file) {
    const std::string whole = file.path + ".new";
    std::error_code error;
    try {
        WriteWhole(whole, file.after);
        fs::permissions(whole, fs::status(file.path).permissions(), error);
        fs::rename(whole, file.path);
    } catch (...) {
        fs::remove(whole, error);
        Fail(FailureNumber::FileAccess, "The file \"" + file.path + "\" can't be written");
    }
}

} // namespace corvane::check

// How fast the playlist reads, saves, numbers and sorts, and what a row of it costs.

#include "ListOnDisk.h"
#include "Measure.h"

#include "core/SettingsKeys.h"
#include "playlist/EntryText.h"
#include "playlist/ListText.h"

#include <malloc.h>

#include <ctime>
#include <fstream>
#include <numeric>

#include <unistd.h>

namespace velmo::bench {

namespace {

constexpr std::size_t Many = 100'000;
constexpr std::size_t Million = 1'000'000;

std::string TitleOf(std::size_t row)
{
    const std::size_t mixed = row * 2654435761U % 1'000'003;
    return "Artist " + std::to_string(mixed % 977) + " - Title number " + std::to_string(mixed);
}

void Fill(controls::ListRows& rows, std::size_t count)
{
    rows.Clear();
    for (std::size_t row = 1; row <= count; ++row) {
        const std::string text = std::to_string(row) + ". " + TitleOf(row);
        const std::string length = FormatSeconds(static_cast<std::int32_t>(row % 600));
        const std::string path = "/home/user/Music/Album " + std::to_string(row / 12) + "/"
                                 + std::to_string(row) + " a title.mp3";
        rows.AddTexts({.Text = text, .Length = length, .Path = path});
    }
}

void MeasureReading(ListFormat format, const char* name)
{
    ListOnDisk disk;
    Fill(disk.playlist.pl, Many);
    const std::string path = disk.directory("measured");
    std::ofstream(path, std::ios::binary) << WriteList(format, disk.playlist.pl, "#ZVL20#");
    const Pair pair = InTurns(
        9,
        [&] {
            disk.playlist.pl.Clear();
            return Seconds([&] {
                ReadList(format, disk.files.Read(path).value_or(""), {}, disk.playlist.pl);
            });
        },
        [&] {
            return Seconds([&] {
                std::ifstream file(path);
                std::vector<std::string> lines;
                for (std::string line; std::getline(file, line);)
                    lines.push_back(line);
            });
        });
    const double ratio = pair.ours / pair.yardstick;
    Row("read " + std::string(name) + " of 100,000 entries",
        Text("%.2f times std::getline", ratio) + Text(" (%.1f ms)", pair.ours * 1000),
        "4",
        ratio < 4);
}

/// Seconds of processor time that `work` takes. For bars that are no ratio: it does not count what
/// else the machine does.
double ProcessorSeconds(const std::function<void()>& work)
{
    const auto now = [] {
        timespec time = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    };
    const double start = now();
    work();
    return now() - start;
}

std::size_t HeapBytes()
{
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

void MeasureMemory()
{
    forms::Playlist playlist;
    std::size_t text = 0;
    const std::size_t before = HeapBytes();
    Fill(playlist.pl, Million);
    const std::size_t bytes = HeapBytes() - before;
    for (std::size_t row = 1; row <= Million; ++row) {
        const controls::RowTexts texts = playlist.pl.Texts(row);
        text += texts.Text.size() + texts.Length.size() + texts.Path.size();
    }
    const double extra = static_cast<double>(bytes - text) / static_cast<double>(Million);
    Row("memory of a row beyond its text, of 1,000,000",
        Text("%.0f bytes", extra),
        "128",
        extra <= 128);
}

void WriteAndSync(const std::string& path, const std::string& content)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    std::fwrite(content.data(), 1, content.size(), file);
    std::fflush(file);
    ::fsync(::fileno(file));
    std::fclose(file);
}

void MeasureSaving()
{
    ListOnDisk disk;
    Fill(disk.playlist.pl, Million);
    disk.list.SaveInternalList();
    const std::string content = disk.files.Read(disk.list.InternalListPath()).value_or("");
    const Pair pair = InTurns(
        5,
        [&] { return Seconds([&] { disk.list.SaveInternalList(); }); },
        [&] { return Seconds([&] { WriteAndSync(disk.directory("yardstick"), content); }); });
    const double ratio = pair.ours / pair.yardstick;
    Row("save 1,000,000 rows",
        Text("%.2f times one fwrite and fsync", ratio) + Text(" (%.0f ms)", pair.ours * 1000),
        "2",
        ratio < 2);
}

/// Seconds of numbering, of stripping, and of deleting every other one of `count` rows.
std::array<double, 3> RowWork(std::size_t count)
{
    ListOnDisk disk;
    controls::ListRows& rows = disk.playlist.pl;
    Fill(rows, count);
    const double strip = ProcessorSeconds([&] { disk.list.StripAllNumbers(1, count); });
    // Rows that have just been made have no room for a number.
    for (std::size_t row = 1; row <= count; ++row) {
        controls::PlaylistEntry entry = rows.Row(row);
        entry.Length = "1:23:45";
        rows.SetRow(row, entry);
    }
    const double number = ProcessorSeconds([&] { disk.list.NumberAllEntries(1, count); });
    for (std::size_t row = 1; row <= count; row += 2)
        rows.Mark(row);
    const double remove = ProcessorSeconds([&] { rows.RemoveMarked(); });
    return {number, strip, remove};
}

void MeasureRowWork()
{
    // All beyond the processor's caches, so that growth shows the work and not their size.
    constexpr std::array<std::size_t, 3> Sizes{300'000, Million, 3'000'000};
    const std::array<const char*, 3> names{"number all", "strip all", "delete half"};
    std::array<std::array<std::vector<double>, 3>, 3> seconds; // by size, then by work
    for (int round = 0; round < 5; ++round) {
        for (std::size_t size = 0; size < Sizes.size(); ++size) {
            const std::array<double, 3> measured = RowWork(Sizes.at(size));
            for (std::size_t work = 0; work < names.size(); ++work)
                seconds.at(size).at(work).push_back(measured.at(work));
        }
    }
    for (std::size_t work = 0; work < names.size(); ++work) {
        const double ofMillion = Median(seconds[1].at(work));
        const double growth = Median(seconds[2].at(work)) / Median(seconds[0].at(work));
        Row(std::string(names.at(work)) + " of 1,000,000 rows",
            Text("%.3f s", ofMillion),
            "0.3 s",
            ofMillion < 0.3);
        Row(std::string(names.at(work)) + ": 3,000,000 rows against 300,000",
            Text("%.1f times the time", growth),
            "12",
            growth <= 12);
    }
}

void MeasureSorting()
{
    ListOnDisk disk;
    controls::ListRows& rows = disk.playlist.pl;
    const Pair pair = InTurns(
        7,
        [&] {
            Fill(rows, Many);
            disk.list.StripAllNumbers(1, Many);
            return Seconds([&] { SortRows(rows, disk.collation, SortDirection::Ascending); });
        },
        [&] {
            std::vector<std::string> keys;
            std::vector<std::size_t> order(Many);
            std::iota(order.begin(), order.end(), std::size_t{0});
            return Seconds([&] {
                for (std::size_t row = 1; row <= Many; ++row)
                    keys.push_back(disk.collation.SortKey(TitleOf(row)));
                std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
                    return keys[a] < keys[b];
                });
            });
        });
    const double ratio = pair.ours / pair.yardstick;
    Row("sort 100,000 titles",
        Text("%.2f times making keys and std::stable_sort", ratio)
            + Text(" (%.0f ms)", pair.ours * 1000),
        "1.3",
        ratio <= 1.3);
}

void MeasureSettings()
{
    ListOnDisk disk;
    disk.settings.WriteSetting(sections::Options, keys::ReadTitlesOn, "display");
    for (int i = 0; i < 100; ++i)
        disk.settings.WriteSetting(sections::RTM, "Key" + std::to_string(i), "some value");
    ::usleep(100'000); // a file that has just been written is read anew each time
    constexpr int Reads = 100'000;
    std::vector<double> rounds;
    for (int round = 0; round < 5; ++round)
        rounds.push_back(ProcessorSeconds([&] {
            for (int i = 0; i < Reads; ++i)
                disk.settings.ReadSetting(sections::Options, keys::ReadTitlesOn, "load");
        }));
    const double microseconds = Median(rounds) / Reads * 1e6;
    Row("read a setting of an unchanged file",
        Text("%.2f us", microseconds),
        "3 us",
        microseconds < 3);
}

} // namespace

} // namespace velmo::bench

int main()
{
    using namespace velmo::bench;
    MeasureMemory();
    MeasureReading(velmo::ListFormat::Own, "list.zvl");
    MeasureReading(velmo::ListFormat::M3u, "M3U");
    MeasureSaving();
    MeasureRowWork();
    MeasureSorting();
    MeasureSettings();
    return 0;
}

// Admission against its definition: a box whose text is cut set by set from the front, a record that is appended,
// compared with all others and taken away again. The program does the same on a cursor and an index; any text must end
// alike.

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "state/recording_services.h"

namespace glintara {
namespace {

// What the definition says of one satellite.
struct PlainRecord {
    std::string number, epoch, name, title, line1, line2, flags;
    int orbitNumber = 0;
    int mirrors = 0;
    bool selected = false;
};

double EpochDays(const std::string& epoch) {
    const int digits = std::atoi(epoch.substr(0, 2).c_str());
    const int year = digits > 50 ? 1900 + digits : 2000 + digits;
    double days = std::atof(epoch.substr(2).c_str());
    for (int y = 1951; y < year; ++y) days += y % 4 == 0 ? 366 : 365;
    return days;
}

// The definition, step by step on the text itself.
struct PlainAdmission {
    std::string box, label;
    std::vector<PlainRecord> table{PlainRecord{}};
    int boxesShown = 0;
    int setsCounted = 0;

    static std::string Upto69(const std::string& text) {
        const std::size_t end = text.find("\r\n");
        return text.substr(0, end == std::string::npos ? 69 : std::min<std::size_t>(69, end));
    }

    static bool HoldsFamilyWord(std::string name) {
        for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return name.find("iridium") != std::string::npos;
    }

    void Run(int mode, bool onlyNewer, bool onlySelected) {
        const std::size_t countAtStart = table.size();
        const int setsAtStart = setsCounted;
        int updated = 0;
        const auto fail = [&](const std::string& words) {
            label = words;
            if (setsCounted == setsAtStart) return;
            const std::size_t added = table.size() - countAtStart;
            label += " (" + std::to_string(added) + (added == 1 ? " satellite added" : " satellites added");
            if (mode != 0) label += " and " + std::to_string(updated) + " updated";
            label += " before that)";
        };
        std::string name;
        for (;;) {
            if (box.find("\r\n") == std::string::npos) {
                fail("ERROR: Invalid TLE Text");
                return;
            }
            if (table.size() - 1 >= 3000) {
                fail("ERROR: Already too many satellites");
                return;
            }
            const std::string boxBefore = box;
            const std::size_t firstEnd = box.find("\r\n");
            const bool digitName = box[0] == '1' && box[1] != ' ' && box.substr(firstEnd + 2, 2) == "1 ";
            std::string thisName = name;
            if (box[0] != '1' || digitName) {
                thisName = box.substr(0, firstEnd);
                if (thisName.substr(0, 2) == "0 ") thisName.erase(0, 2);
                box.erase(0, firstEnd + 2);
            }
            PlainRecord record;
            record.line1 = Upto69(box);
            const std::size_t end1 = box.find("\r\n");
            record.line2 = end1 == std::string::npos ? "" : Upto69(box.substr(end1 + 2));
            EngineBlock block{};
            if (record.line1.substr(0, 1) != "1" || record.line2.substr(0, 1) != "2" ||
                SatelliteInit(record.line1.c_str(), record.line2.c_str(), 'i', &block) != 0) {
                fail("ERROR: Invalid TLE Text");
                ++boxesShown;
                box = boxBefore;
                return;
            }
            name = thisName;
            record.name = record.title = name;
            record.number = record.line1.substr(2, 5);
            record.epoch = record.line1.substr(18, 14);
            record.flags = "1000000000000000";
            record.mirrors = HoldsFamilyWord(name) ? 3 : 0;
            record.orbitNumber = static_cast<int>(table.size());
            table.push_back(record);
            ++setsCounted;

            bool found = false;
            for (std::size_t i = 1; mode != 0 && i + 1 < table.size(); ++i) {
                PlainRecord& old = table[i];
                if (old.number != record.number) continue;
                if (onlySelected && !old.selected) {
                    found = true;
                } else if (!onlyNewer || EpochDays(record.epoch) > EpochDays(old.epoch)) {
                    PlainRecord merged = record;
                    merged.flags = old.flags;
                    merged.orbitNumber = old.orbitNumber;
                    merged.mirrors = old.mirrors;
                    merged.selected = old.selected;
                    old = merged;
                    found = true;
                    ++updated;
                }
            }
            if (found || mode == 2) table.pop_back();
            label = "Added Satellites #" + std::to_string(table.size() - countAtStart);
            if (mode != 0) label += " (" + std::to_string(updated) + " updated)";

            box.erase(0, box.find("\r\n") + 2);
            const std::size_t end2 = box.find("\r\n");
            if (end2 == std::string::npos) {
                box.clear();
                return;
            }
            box.erase(0, end2 + 2);
            if (box.find('1') == std::string::npos) return;
        }
    }
};

class TextMaker {
  public:
    explicit TextMaker(unsigned seed) : random_(seed) {}

    int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    bool OneIn(int n) { return Below(n) == 0; }

    std::string Batch() {
        std::string text;
        const int sets = Below(12);
        for (int i = 0; i < sets; ++i) text += Set();
        if (OneIn(4) && text.size() >= 2) text.erase(text.size() - 2);
        if (OneIn(6))
            text += std::vector<std::string>{"\r\n", "the end", "the end\r\n", "1",
                                             "\r\n\r\n1\r\n"}[static_cast<std::size_t>(Below(5))];
        return text;
    }

  private:
    std::string Name() {
        static const std::vector<std::string> names{
            "ISS (ZARYA)", "0 VANGUARD 1", "1KUNS-PF",   "IRIDIUM 7", "Iridium 33 [-]", "0", "0 ", "1", "2 BODIES", "",
            "IRIDIU M",    "11",           "0 1 iridium"};
        return names[static_cast<std::size_t>(Below(OneIn(4) ? static_cast<int>(names.size()) : 5))];
    }

    std::string LineEnd() { return OneIn(60) ? "\n" : "\r\n"; }

    void Damage(std::string& line) {
        switch (Below(12)) {
            case 0:
                line += " remark 1";
                break;
            case 1:
                line.pop_back();
                break;
            case 2:
                line.back() = 'x';
                break;
            case 3:
                if (OneIn(4)) line.erase(0, 1);
                break;
            case 4:
                if (OneIn(4)) line.resize(static_cast<std::size_t>(Below(69)));
                break;
            case 5:
                if (OneIn(4)) line[52] = 'x';
                break;
            default:
                break;
        }
    }

    std::string Set() {
        static const std::vector<std::string> numbers{"00001", "00002", "00003", "00004", "25544", "A0000", "    5"};
        static const std::vector<std::string> epochs{"08264.51782528", "08264.51782529", "99001.00000000",
                                                     "50365.00000000", "51001.00000000"};
        std::string line1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
        std::string line2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
        line1.replace(2, 5, numbers[static_cast<std::size_t>(Below(7))]);
        line1.replace(18, 14, epochs[static_cast<std::size_t>(Below(5))]);
        if (OneIn(5)) Damage(line1);
        if (OneIn(5)) Damage(line2);
        std::string text;
        if (!OneIn(3)) text += Name() + LineEnd();
        if (OneIn(60)) text += LineEnd();
        text += line1 + LineEnd();
        if (!OneIn(60)) text += line2 + LineEnd();
        return text;
    }

    std::mt19937 random_;
};

void ExpectSame(const Application& app, const PlainAdmission& plain) {
    EXPECT_EQ(app.Main.TTLE.Text.Get(), plain.box);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), plain.label);
    EXPECT_EQ(app.Data.UsageStats.TLECount, plain.setsCounted);
    ASSERT_EQ(app.Data.SatCount + 1, static_cast<int>(plain.table.size()));
    for (int i = 1; i <= app.Data.SatCount; ++i) {
        const SatRecord& have = app.Data.Satellite(i);
        const PlainRecord& want = plain.table[static_cast<std::size_t>(i)];
        EXPECT_EQ(have.SatNumber, want.number);
        EXPECT_EQ(have.EpochText, want.epoch);
        EXPECT_EQ(have.Name, want.name);
        EXPECT_EQ(have.TitleLine, want.title);
        EXPECT_EQ(have.Line1, want.line1);
        EXPECT_EQ(have.Line2, want.line2);
        EXPECT_EQ(have.OptionFlags, want.flags);
        EXPECT_EQ(have.OrbitNumber, want.orbitNumber);
        EXPECT_EQ(have.Surface.MirrorCount, want.mirrors);
        EXPECT_EQ(have.Selected, want.selected);
    }
}

TEST(AdmissionByCursorAndIndex, EndsLikeTheBoxThatIsCutSetBySet) {
    glintara::testing::RecordingBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app(boxes, events, windows, ApplyDefaultModel);
    int updates = 0;
    int failures = 0;

    for (unsigned seed = 1; seed <= 400; ++seed) {
        TextMaker make(seed);
        PlainAdmission plain;
        app.Data.SatCount = 0;
        app.Data.UsageStats.TLECount = 0;
        boxes.messages.clear();
        for (int batch = 0; batch < 5; ++batch) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", batch " + std::to_string(batch));
            for (int i = 1; i <= app.Data.SatCount; ++i) {
                PlainRecord& record = plain.table[static_cast<std::size_t>(i)];
                record.selected = app.Data.Satellite(i).Selected = make.OneIn(2);
                record.flags = app.Data.Satellite(i).OptionFlags = make.OneIn(2) ? "0" : "1100000000000000";
            }
            const int mode = make.Below(3);
            const bool onlyNewer = make.OneIn(2);
            const bool onlySelected = make.OneIn(2);
            plain.box = make.Batch();
            app.Main.TTLE.Text = plain.box;

            CApplyTLEOrbitFnct(app, static_cast<TLEMode>(mode), onlyNewer, onlySelected);
            plain.Run(mode, onlyNewer, onlySelected);

            ExpectSame(app, plain);
            EXPECT_EQ(static_cast<int>(boxes.messages.size()), plain.boxesShown);
            if (::testing::Test::HasFailure()) return;
            if (plain.label.find("updated") != std::string::npos && plain.label.find("(0 ") == std::string::npos)
                ++updates;
        }
        failures += plain.boxesShown;
    }
    EXPECT_GT(updates, 100) << "the batches must hold updates";
    EXPECT_GT(failures, 100) << "and sets that cannot be used";
}

}  // namespace
}  // namespace glintara

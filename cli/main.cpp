// glint, the terminal companion of Glintara.

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/flares_command.h"
#include "cli/track_command.h"
#include "cli/where_command.h"
#include "engine/astro/number_text.h"
#include "orbit/out_of_memory.h"
#include "orbit/satellite_table.h"
#include "state/city_tables.h"
#include "state/version.h"

namespace {

using namespace glintara::cli;
using glintara::kFirstMinPopulation;
using glintara::PlainNumberText;

constexpr const char* kSeeHelp = "\nRun with --help for more information.";

/// An option that is one number.
CLI::Option* AddNumber(CLI::App& command, const std::string& name, double& target, const std::string& help) {
    return command
        .add_option_function<std::string>(
            name, [name, &target](const std::string& text) { target = ParseNumber(name, text); }, help)
        ->default_str(PlainNumberText(target));
}

void AddElementOptions(CLI::App& command, CommonOptions& options, const std::string& instantName,
                       const std::string& instantHelp, const std::string& nameHelp) {
    command
        .add_option(
            "--tle", options.tleFiles,
            "File of element sets: two or three lines each, or CSV, JSON or XML; \"-\" reads standard input; may be "
            "given more than once")
        ->required()
        ->expected(1)
        ->take_all()
        ->type_name("FILE");
    command
        .add_option_function<std::string>(
            instantName, [&options](const std::string& text) { options.from = text; }, instantHelp)
        ->type_name("UTC");
    command.add_option("--name", options.name, nameHelp)->type_name("TEXT");
}

void AddCommonOptions(CLI::App& command, CommonOptions& options, const std::string& instantName,
                      const std::string& instantHelp) {
    AddElementOptions(command, options, instantName, instantHelp,
                      "Only satellites whose name contains this, in any case");
    command.add_option("--site", options.site, "The observer: degrees north, degrees east, metres (150 when left out)")
        ->required()
        ->type_name("LAT,LON[,HEIGHT]");
    command
        .add_option_function<std::string>(
            "--format", [&options](const std::string& text) { options.format = ParseFormat(text); },
            "text (aligned, for people), csv or json (all digits)")
        ->type_name("text|csv|json")
        ->default_str("text");
}

void AddTrackOptions(CLI::App& command, TrackOptions& options) {
    AddElementOptions(command, options, "--from",
                      "Start of the track, such as 2018-01-20T05:30:00Z (now when left out)",
                      "The satellite: part of its name, in any case, that no other name has, or all of it");
    AddNumber(command, "--orbits", options.orbits, "Length of the track, revolutions")->type_name("N");
    command.add_flag("--moon", options.moon, "Moonlight instead of sunlight");
    command.add_flag("--transit", options.transit,
                     "Where the satellite passes in front of the Sun (with --moon, the Moon) instead of flares");
    command.add_flag("--day", options.day, "By day too");
    command
        .add_option_function<std::string>(
            "--kml", [&options](const std::string& text) { options.kml = text; }, "Writes the track as a line for maps")
        ->type_name("FILE");
    command
        .add_option_function<std::string>(
            "--table", [&options](const std::string& text) { options.table = text; }, "Writes the track as a table")
        ->type_name("FILE");
}

/// What is wrong with the command line, in the words of the program.
std::string UsageText(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> unknown = app.remaining(true);
    if (!unknown.empty()) {
        const std::string& word = unknown.front();
        const bool option = word.size() > 1 && word.front() == '-';
        const char* const kind = option ? "option" : app.get_subcommands().empty() ? "command" : "argument";
        return std::string("no such ") + kind + ": " + glintara::ShownName(word) + kSeeHelp;
    }
    if (app.get_subcommands().empty()) return std::string("tell what to do: flares, track, cities or where") + kSeeHelp;
    return glintara::ShownName(error.what()) + kSeeHelp;
}

/// What was printed must have arrived: a full disk or a closed pipe is no success.
void EndOutput() {
    std::cout.flush();
    if (!std::cout) throw Failure(kBadData, "the output could not be written");
}

void Run(int argc, char** argv) {
    CLI::App app{"Flares of artificial satellites, and where the satellites are."};
    app.name("glint");
    app.set_version_flag("--version", "glint " + std::string(glintara::kVersion));
    app.require_subcommand(1);

    FlareOptions flareOptions;
    CLI::App* const flares =
        app.add_subcommand("flares", "Lists the flares, or transits, near a place in order of time");
    AddCommonOptions(*flares, flareOptions, "--from",
                     "Start of the search, such as 2018-01-20T05:30:00Z (now when left out)");
    AddNumber(*flares, "--hours", flareOptions.hours, "Length of the search")->type_name("H");
    AddNumber(*flares, "--within", flareOptions.within, "Greatest distance of the flare's centre")->type_name("KM");
    AddNumber(*flares, "--threads", flareOptions.threads,
              "Threads that search; 0 is one for each core. The list is the same")
        ->type_name("N");
    flares->add_flag("--moon", flareOptions.moon, "Moonlight instead of sunlight");
    flares->add_flag("--transit", flareOptions.transit,
                     "Passages in front of the Sun (with --moon, the Moon) instead of flares");

    TrackOptions trackOptions;
    CLI::App* const track =
        app.add_subcommand("track", "Follows the flares, or transits, of one satellite over the ground");
    AddTrackOptions(*track, trackOptions);

    TrackOptions cityOptions;
    cityOptions.population = kFirstMinPopulation;
    CLI::App* const cities = app.add_subcommand("cities", "Lists the cities that such a track passes within 5 km");
    AddTrackOptions(*cities, cityOptions);
    AddNumber(*cities, "--population", cityOptions.population, "Inhabitants of the smallest city that is looked at")
        ->type_name("N");
    cities->add_option("--data", cityOptions.data, "Folder of DB005.VDB or cities1000.txt, when it is another one")
        ->type_name("FOLDER");

    CommonOptions whereOptions;
    CLI::App* const where = app.add_subcommand("where", "Tells where the satellites are at one instant");
    AddCommonOptions(*where, whereOptions, "--at,--from",
                     "The instant, such as 2018-01-20T05:30:00Z (now when left out)");

    app.footer("Exit codes: 0 done, 1 bad data, 2 bad command line, 130 interrupted.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
        EndOutput();
        return;
    } catch (const CLI::ParseError& error) {
        throw Failure(kBadUsage, UsageText(app, error));
    }

    if (flares->parsed())
        RunFlares(flareOptions, std::cout);
    else if (track->parsed())
        RunTrack(trackOptions, std::cout);
    else if (cities->parsed())
        RunCities(cityOptions, std::cout);
    else
        RunWhere(whereOptions, std::cout);
    EndOutput();
}

}  // namespace

int main(int argc, char** argv) {
    glintara::EndInWordsWithoutMemory("glint");
    try {
        Run(argc, argv);
        return kSuccess;
    } catch (const Failure& failure) {
        std::cerr << "glint: " << failure.what() << '\n';
        return failure.Code();
    } catch (const std::exception& error) {
        std::cerr << "glint: " << error.what() << '\n';
        return kBadData;
    }
}

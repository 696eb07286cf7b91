// glint, the terminal companion of Glintara.

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

#include "cli/arguments.h"
#include "cli/flares_command.h"
#include "cli/where_command.h"

namespace {

using namespace glintara::cli;

void AddCommonOptions(CLI::App& command, CommonOptions& options, const std::string& instantName,
                      const std::string& instantHelp) {
    static const std::map<std::string, Format> formats{
        {"text", Format::Text}, {"csv", Format::Csv}, {"json", Format::Json}};
    command
        .add_option("--tle", options.tleFiles,
                    "File of two- or three-line element sets; \"-\" reads standard input; may be given more than once")
        ->required()
        ->expected(1)
        ->take_all()
        ->type_name("FILE");
    command.add_option("--site", options.site, "The observer: degrees north, degrees east, metres (150 when left out)")
        ->required()
        ->type_name("LAT,LON[,HEIGHT]");
    command.add_option(instantName, options.from, instantHelp)->type_name("UTC");
    command.add_option("--name", options.name, "Only satellites whose name contains this, in any case")
        ->type_name("TEXT");
    command.add_option("--format", options.format, "text (aligned, for people), csv or json (all digits)")
        ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description(""))
        ->type_name("text|csv|json")
        ->default_str("text");
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Flares of artificial satellites, and where the satellites are."};
    app.name("glint");
    app.set_version_flag("--version", "glint " GLINT_VERSION);
    app.require_subcommand(1);

    FlareOptions flareOptions;
    CLI::App* const flares =
        app.add_subcommand("flares", "Lists the flares, or transits, near a place in order of time");
    AddCommonOptions(*flares, flareOptions, "--from",
                     "Start of the search, such as 2018-01-20T05:30:00Z (now when left out)");
    flares->add_option("--hours", flareOptions.hours, "Length of the search")->type_name("H")->capture_default_str();
    flares->add_option("--within", flareOptions.within, "Greatest distance of the flare's centre")
        ->type_name("KM")
        ->capture_default_str();
    flares->add_flag("--moon", flareOptions.moon, "Moonlight instead of sunlight");
    flares->add_flag("--transit", flareOptions.transit,
                     "Passages in front of the Sun (with --moon, the Moon) instead of flares");

    CommonOptions whereOptions;
    CLI::App* const where = app.add_subcommand("where", "Tells where the satellites are at one instant");
    AddCommonOptions(*where, whereOptions, "--at,--from",
                     "The instant, such as 2018-01-20T05:30:00Z (now when left out)");

    app.footer("Exit codes: 0 done, 1 bad data, 2 bad command line, 130 interrupted.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kSuccess : kBadUsage;
    }

    try {
        if (flares->parsed())
            RunFlares(flareOptions, std::cout);
        else
            RunWhere(whereOptions, std::cout);
        std::cout.flush();
        if (!std::cout) throw Failure(kBadData, "the output could not be written");
    } catch (const Failure& failure) {
        std::cerr << "glint: " << failure.what() << '\n';
        return failure.Code();
    } catch (const std::exception& error) {
        std::cerr << "glint: " << error.what() << '\n';
        return kBadData;
    }
    return kSuccess;
}

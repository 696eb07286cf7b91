#include "desktop/main/mnemonics.h"

#include <gtest/gtest.h>

namespace glintara::desktop {
namespace {

TEST(Mnemonics, EachEntryHasALetterOfItsOwnTheBeginningsOfWordsFirst) {
    Mnemonics letters;
    EXPECT_EQ(letters.Take("Sky"), QChar('s'));
    EXPECT_EQ(letters.Take("Satellites"), QChar('a'));
    EXPECT_EQ(letters.Take("Show Atmosphere"), QChar('h'));
    EXPECT_EQ(letters.Take("Sky Map"), QChar('m'));
    EXPECT_EQ(letters.Take("s"), QChar()) << "all of its letters are taken";
    EXPECT_EQ(letters.Take("..."), QChar());
}

TEST(Mnemonics, TheLetterIsUnderlinedWhereItBeginsAWord) {
    EXPECT_EQ(WithMnemonic("File", 'f'), "&File");
    EXPECT_EQ(WithMnemonic("Satellites", 'a'), "S&atellites");
    EXPECT_EQ(WithMnemonic("Lock On Satellite", 's'), "Lock On &Satellite");
    EXPECT_EQ(WithMnemonic("Exit", {}), "Exit");
    EXPECT_EQ(WithMnemonic("Sun & Moon", 'm'), "Sun && &Moon");
}

}  // namespace
}  // namespace glintara::desktop

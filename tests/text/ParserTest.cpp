#include "AsciiReader_cls.h"
#include "ParserNumeric_cls.h"
#include "Parser_cls.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(Parser, PopFromTheLeftAndTheRight) {
    wxString strLine = "A::B::C";
    EXPECT_EQ(Parser_cls::PopStrItemFromStrLine(strLine, "::"), "A");
    EXPECT_EQ(strLine, "B::C");

    strLine = "A";
    EXPECT_EQ(Parser_cls::PopStrItemFromStrLine(strLine, "::"), "A");
    EXPECT_TRUE(strLine.empty());

    strLine = "";
    EXPECT_EQ(Parser_cls::PopStrItemFromStrLine(strLine, "::"), "");
    EXPECT_TRUE(strLine.empty());

    strLine = "::B";
    EXPECT_EQ(Parser_cls::PopStrItemFromStrLine(strLine, "::"), "");
    EXPECT_EQ(strLine, "B");

    strLine = "A::B::C";
    EXPECT_EQ(Parser_cls::PopLastItemFromStrLine(strLine, "::"), "C");
    EXPECT_EQ(strLine, "A::B");
    strLine = "A";
    EXPECT_EQ(Parser_cls::PopLastItemFromStrLine(strLine, "::"), "A");
    EXPECT_TRUE(strLine.empty());

    EXPECT_EQ(Parser_cls::FindLast("A::B::C", "::"), 4);
    EXPECT_EQ(Parser_cls::FindLast("ABC", "::"), -1);
    EXPECT_EQ(Parser_cls::GetLastItem("SceneObjCtrl::Obj::Box::Position", "::"), "Position");
    EXPECT_EQ(Parser_cls::GetLastItem("Position", "::"), "Position");
}

TEST(ParserNumeric, RangeBlocks) {
    wxString str = "1-10-2,20, 30-40";
    EXPECT_EQ(ParserNumeric_cls::GetStringBlock(&str), "1-10-2");
    EXPECT_EQ(str, "20, 30-40");
    EXPECT_EQ(ParserNumeric_cls::GetStringBlock(&str), "20");
    EXPECT_EQ(ParserNumeric_cls::GetStringBlock(&str), " 30-40");
    EXPECT_TRUE(str.empty());

    EXPECT_EQ(ParserNumeric_cls::GetStrIni(" 1-10-2 "), "1");
    EXPECT_EQ(ParserNumeric_cls::GetStrFin("1-10-2"), "10");
    EXPECT_EQ(ParserNumeric_cls::GetStrInc("1-10-2"), "2");
    // A leading minus is the sign of the first number, not a separator.
    EXPECT_EQ(ParserNumeric_cls::GetStrIni("-5-3"), "-5");
    EXPECT_EQ(ParserNumeric_cls::GetStrFin("-5-3"), "3");
    EXPECT_EQ(ParserNumeric_cls::GetStrFin("7"), "-");
    EXPECT_EQ(ParserNumeric_cls::GetStrInc("7-9"), "1");
}

TEST(AsciiReader, ScansNumbersAndWordsInPlace) {
    const char text[] = "1.5 -2 300000000000 1\nPOS 7\n";
    const char* end = text + strlen(text);
    const char* p = text;
    EXPECT_FLOAT_EQ(AsciiReader_cls::ReadFloat(&p, ' '), 1.5f);
    ++p;
    EXPECT_EQ(AsciiReader_cls::ReadInt(&p, ' '), -2);
    ++p;
    EXPECT_EQ(AsciiReader_cls::ReadLongLong(&p, ' '), 300000000000LL);
    ++p;
    EXPECT_TRUE(AsciiReader_cls::ReadBool(&p, ' '));
    EXPECT_EQ(*p, '\n');

    ++p;
    EXPECT_EQ(AsciiReader_cls::SearchTagStr(&p, "PO", end, true), 0);
    EXPECT_EQ(AsciiReader_cls::SearchTagStr(&p, "POS", end, false), 1);
    EXPECT_EQ(*p, 'P'); // not advanced without the flag
    EXPECT_EQ(AsciiReader_cls::SearchTagStr(&p, "POS", end, true), 1);
    EXPECT_EQ(*p, ' ');

    // Two blanks in a row shift the columns: the second read starts on a blank and stays there.
    const char shifted[] = "1  2 3\n";
    p = shifted;
    EXPECT_FLOAT_EQ(AsciiReader_cls::ReadFloat(&p, ' '), 1.0f);
    ++p;
    EXPECT_FLOAT_EQ(AsciiReader_cls::ReadFloat(&p, ' '), 2.0f);
    ++p;
    EXPECT_FLOAT_EQ(AsciiReader_cls::ReadFloat(&p, ' '), 2.0f);
    ++p;
    EXPECT_FLOAT_EQ(AsciiReader_cls::ReadFloat(&p, ' '), 3.0f);

    char line[64];
    p = text;
    AsciiReader_cls::GetStrUptoLineEnd(&p, line, end);
    EXPECT_STREQ(line, "1.5 -2 300000000000 1");
    EXPECT_EQ(*p, '\n');

    p = text;
    AsciiReader_cls::SearchChar(&p, 'S', end);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(*p, 'S');
    AsciiReader_cls::SearchChar(&p, 'Q', end);
    EXPECT_EQ(p, nullptr);

    EXPECT_EQ(AsciiReader_cls::IsCharExist("ab,c", 'c', ','), 0);
    EXPECT_EQ(AsciiReader_cls::IsCharExist("ab,c", 'b', ','), 1);
}

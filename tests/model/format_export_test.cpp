// The structure of the formats in use, byte by byte.
#include "model/format_export.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/model/fixture.h"

namespace orv::model {
namespace {

const std::string kRule = "--------------------------------------------\r\n";

class ExportTest : public test::ModelTest {
  protected:
    ExportTest() { root.Reload(); }

    std::string Exported() { return FormatStructure(root, bench.state); }
    void UseOnly(std::int32_t position, std::int32_t transports) {
        for (AdvancedFormat& format : root.AdvancedFormats())
            format.Transports(0);
        Format(position).Transports(transports);
    }
};

TEST_F(ExportTest, WritesABlockForEachFormatInUse) {
    EXPECT_EQ(Exported(), "Format #1\r\n" + kRule +
                              "Header:     <STX> (02)\r\n"
                              "Terminator: <ETX> (03)\r\n"
                              "\tCode                     Dec\t0\r\n"
                              "\tMiscString               Dec\t0\r\n"
                              "\tLength                   Dec\t3\r\n"
                              "\tXPos                     Dec\t5\r\n"
                              "\tCode                     Dec\t0\r\n"
                              "\r\n"
                              "Format #2\r\n" +
                              kRule +
                              "Header:     < (3C)\r\n"
                              "Terminator: ><CR><LF> (3E 0D 0A)\r\n"
                              "\tPackIdentifier           Dec\t6\r\n"
                              "\tYear                     Dec\t4\r\n"
                              "\tScannerStatus            Hex\t2\r\n"
                              "\tDiagnosticStats          Dec\t5\r\n"
                              "\r\n"
                              "Format #3\r\n" +
                              kRule +
                              "Header:      ()\r\n"
                              "Terminator:  ()\r\n"
                              "\tMiscString               Dec\t0\r\n"
                              "\r\n");
}

TEST_F(ExportTest, WithoutAnyTransportThereIsNothingAndBitThirtyOneIsOne) {
    UseOnly(4, 0);
    EXPECT_EQ(Exported(), "");
    UseOnly(4, static_cast<std::int32_t>(0x80000000U));
    EXPECT_EQ(Exported(), "Format #4\r\n" + kRule + "Header:      ()\r\nTerminator:  ()\r\n\r\n");
}

TEST_F(ExportTest, UnknownFormatsAndTypesAreEmptyButKeepTheirColumns) {
    UseOnly(4, 1);
    const struct {
        std::int32_t category, type, format;
        std::uint8_t length;
    } items[] = {{0, 29, 0, 1}, {0, 1, 4, 255}, {7, 1, 3, 0}, {1, 29, -1, 9}, {1, 4, 1, 8}};
    for (const auto& c : items) {
        OutItem& item = Format(4).OutItems().Create(static_cast<std::int16_t>(Format(4).OutItems().Count() + 1), L"");
        item.ItemCategory(c.category);
        item.CodeRelType(c.type);
        item.GlobalType(c.type);
        item.FormatType(c.format);
        item.FormatLength(c.length);
    }
    EXPECT_EQ(Exported(), "Format #4\r\n" + kRule +
                              "Header:      ()\r\n"
                              "Terminator:  ()\r\n"
                              "\t                         Dec\t1\r\n"
                              "\tLength                   \t255\r\n"
                              "\t                         Asc\t0\r\n"
                              "\tDiagnosticStats          \t9\r\n"
                              "\tGlobPartialReadings      Bin\t8\r\n"
                              "\r\n");
}

TEST_F(ExportTest, NamesEveryByteOfAHeader) {
    static const char* const kNames[] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT",  "LF",
                                         "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
                                         "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US",  "Space"};
    Bytes every;
    std::string shown;
    std::string digits;
    for (int byte = 0; byte < 256; ++byte) {
        every.push_back(static_cast<std::uint8_t>(byte));
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02X", byte);
        digits += (byte > 0 ? " " : "") + std::string(hex);
        if (byte <= 32)
            shown += "<" + std::string(kNames[byte]) + ">";
        else
            shown += byte < 128 ? std::string(1, static_cast<char>(byte)) : "<$" + std::string(hex) + ">";
    }
    Set(345, every, 3);
    root.Reload();
    UseOnly(4, 1);
    EXPECT_EQ(Exported(),
              "Format #4\r\n" + kRule + "Header:     " + shown + " (" + digits + ")\r\nTerminator:  ()\r\n\r\n");
    // What the code page lacks is exported as it would be sent.
    Format(4).Header(L"\x4e00");
    EXPECT_NE(Exported().find("Header:     ? (3F)\r\n"), std::string::npos);
}

} // namespace
} // namespace orv::model

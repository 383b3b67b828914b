// SET IMAGE's packet made straight from the open file must be the packet of
// the file's bytes, whichever way it is made: one read for a small image,
// piece by piece for a large one, and counted as read when the file is not
// the length it was when opened.

#include "graphics/file_table.h"
#include "graphics/test_functions.h"
#include "server/text.h"

#include "support/drive_folder.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace vantrel {
namespace {

using testing::DriveFolder;

// Every byte value, over and over, so that a byte read as signed or a piece
// boundary in the wrong place shows.
std::string Bytes(std::size_t length) {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<char>((i * 7 + i / 251) % 256);
    }
    return bytes;
}

TEST(ImagePacketFromFile, IsThePacketOfTheFilesBytesAtEverySize) {
    DriveFolder drive;
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{1}, std::size_t{256}, std::size_t{300001}, (std::size_t{8} << 20) + 3}) {
        const std::string bytes = Bytes(length);
        drive.WriteImage(bytes);
        FileTable files;
        const int number = files.OpenForInput(drive.ImageFile());
        const Text packet = ImagePacket(u"07", files, number);
        ASSERT_EQ(ImagePacket(u"07", bytes), packet) << length << " bytes";
        EXPECT_EQ(0u, files.Read(number, nullptr, 0)) << "read to its end";
    }
}

TEST(ImagePacketFromFile, AFileAlreadyPartlyReadIsCountedAsWhatIsLeft) {
    DriveFolder drive;
    for (const std::size_t length : {std::size_t{5000}, (std::size_t{8} << 20) + 10}) {
        const std::string bytes = Bytes(length);
        drive.WriteImage(bytes);
        FileTable files;
        const int number = files.OpenForInput(drive.ImageFile());
        char first[10];
        ASSERT_EQ(10u, files.Read(number, first, sizeof first));
        EXPECT_TEXT(ImagePacket(u"07", std::string_view(bytes).substr(10)), ImagePacket(u"07", files, number));
    }
}

}  // namespace
}  // namespace vantrel

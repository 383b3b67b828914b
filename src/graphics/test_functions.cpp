// The test functions window. Its commands pass their own values to the
// server, never CommandData, write neither console box and leave the window
// open. In the message texts \033 is ESC and \032 is SUB.

#include "test_functions.h"

#include "console/console.h"
#include "graphics/display_message.h"
#include "graphics/file_table.h"
#include "graphics/graphics.h"
#include "graphics/local_path.h"
#include "server/packet_block.h"

#include <limits>
#include <memory>
#include <string>

namespace vantrel {

namespace {

// The run-together SequenceNumber and ImageId attributes are what the
// server expects; 106 characters in all.
constexpr TextView kImageHeader =
    u"<DisplayCommand>"
    u"<SetImageDetailsCommand SequenceNumber=\"0\""
    u"ImageId=\"1\" Filename=\"Banner.png\" Language=\"en\">";

void SecurePrompt(Console& console) {
    constexpr TextView prompt =
        u"<DisplaySecurePromptCommand SequenceNumber=\"0\" "
        u"PromptId=\"3\" "
        u"Language=\"en\" "
        u"SecurityLevel=\"Encrypted\" "
        u"MaxLength=\"4\" "
        u"AutoTerminate=\"true\" "
        u"Hidden=\"false\" "
        u"PINSupportData=\"5A3C19E07B42D68F\""
        u"/>";
    CommandBlock block = PacketBlock(console.SelectedPositionText, prompt);
    block.Append(kCrLf).Terminate();
    console.KRM().Put("PacketQueOutput", Variant::OfText(block.Text()));
}

void CentredLongLine(Console& console) {
    CommandBlock block = DisplayMessage(console.SelectedPositionText,
                                        u"\033G\033\032000\033A22\033F\"Courier New\"14"
                                        u"Center this very very long xxxxxxxxx text line");
    block.AddLine(u"").Terminate();
    console.KRM().Put("DisplayData", Variant::OfText(block.Text()));
}

// Opens the file again on every press and leaves it open (see FileTable).
void SetImage(Console& console, FileTable& files) {
    const int number = files.OpenForInput(LocalPath(kImageFile));
    const std::string bytes = files.ReadToEnd(number);
    console.KRM().Put("PacketQueOutput", Variant::OfText(ImagePacket(console.SelectedPositionText, bytes)));
}

}  // namespace

std::int32_t ImagePacketCount(std::uint64_t dataLength) {
    constexpr auto kLimit = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    if (dataLength > kLimit - kImageHeader.size()) {
        throw errors::Overflow();
    }
    return static_cast<std::int32_t>(dataLength + kImageHeader.size());
}

Text ImagePacket(TextView position, std::string_view fileBytes) {
    Text packet = PacketHeader(position, ImagePacketCount(fileBytes.size()), 5).Text();
    packet.reserve(packet.size() + kImageHeader.size() + fileBytes.size());
    packet.append(kImageHeader);
    // An image may be tens of megabytes: widen it in slices straight into
    // the one packet text rather than through a second text of its size.
    constexpr std::size_t kSlice = std::size_t{1} << 16;
    for (std::size_t at = 0; at < fileBytes.size(); at += kSlice) {
        packet.append(FromBytes(fileBytes.substr(at, kSlice)));
    }
    return packet;
}

FormDescription TestFunctionForm() {
    // The window's file table: shared by every copy of this description and
    // gone only with the console, at the end of the program.
    auto files = std::make_shared<FileTable>();
    FormDescription form;
    form.name = kTestFunctionForm;
    form.caption = u"Test Functions";
    form.clientWidth = 4680;
    form.clientHeight = 3195;
    // The window's Timer1 has no handler and does nothing; it is left out.
    form.controls = {
        CommandButton("iXCAT_DES_TEST", u"iXCat DES Test", 120, 120, 1335, 495, SecurePrompt),
        CommandButton("SecialTests", u"SPECIAL TESTS", 3000, 120, 1335, 495, CentredLongLine),
        CommandButton("SET_IMAGE_BUTTON", u"SET IMAGE", 3000, 840, 1335, 495,
                      [files](Console& console) { SetImage(console, *files); }),
        CommandButton("EXIT_BUTTON", u"EXIT", 120, 2520, 1095, 495,
                      [](Console& console) { console.Hide(kTestFunctionForm); }),
    };
    return form;
}

}  // namespace vantrel

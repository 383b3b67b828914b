// The test functions window. Its commands pass their own values to the
// server, never CommandData, write neither console box and leave the window
// open. In the message texts \033 is ESC and \032 is SUB.

#include "test_functions.h"

#include "base/console.h"
#include "graphics/display_message.h"
#include "graphics/file_table.h"
#include "graphics/graphics.h"
#include "graphics/local_path.h"
#include "graphics/large_text.h"
#include "server/packet_block.h"

#include <algorithm>
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
    console.KRM().Put("PacketQueOutput", Variant::OfText(ImagePacket(console.SelectedPositionText, files, number)));
}

// From here on an image's packet is made piece by piece into room taken at
// once; below it, the whole file is read first.
constexpr std::uint64_t kLargeImage = std::uint64_t{8} << 20;

// Whether every character of the text fits in a byte.
bool Narrow(TextView text) {
    return std::all_of(text.begin(), text.end(), [](char16_t character) { return character <= 0xFF; });
}

// The packet header counting the data, then the image header.
Text ImagePacketHead(TextView position, std::uint64_t dataLength) {
    Text head = PacketHeader(position, ImagePacketCount(dataLength), 5).Text();
    head.append(kImageHeader);
    return head;
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
    Text packet = ImagePacketHead(position, fileBytes.size());
    packet.reserve(packet.size() + fileBytes.size());
    AppendBytes(packet, fileBytes);
    return packet;
}

Text ImagePacket(TextView position, FileTable& files, int number) {
    const std::uint64_t expected = files.SizeOf(number).value_or(0);
    // A larger file would cost gigabytes for its packet and the record of
    // it: refused before anything is read or sent.
    if (expected > kMaxImageFile) {
        throw RuntimeError(7, "Out of memory");
    }
    Text packet = ImagePacketHead(position, expected);
    const std::size_t headLength = packet.size();
    if (expected < kLargeImage && Narrow(packet)) {
        // The file read in one read behind the head, one byte more than its
        // size to see whether it grew, and the whole packet made from that
        // in one pass, one byte to one character.
        const auto length = static_cast<std::size_t>(expected);
        const auto bytes = std::make_unique_for_overwrite<char[]>(headLength + length + 1);
        std::copy(packet.begin(), packet.end(), bytes.get());
        const std::size_t read = files.Read(number, bytes.get() + headLength, length + 1);
        if (read == length) {
            const auto* first = reinterpret_cast<const unsigned char*>(bytes.get());
            return Text(first, first + headLength + length);
        }
        // A file that changed its length while it was read is counted as
        // read, to its end.
        std::string data(bytes.get() + headLength, read);
        files.ReadInPieces(number, [&data](std::string_view piece) { data.append(piece); });
        return ImagePacket(position, data);
    }
    // A large image: room for the whole packet at once, and each piece
    // widened into it while fresh from the read, so that neither the bytes
    // nor the text are ever held twice.
    ReserveLarge(packet, headLength + static_cast<std::size_t>(expected));
    files.ReadInPieces(number, [&packet](std::string_view piece) { AppendBytes(packet, piece); });
    if (const std::uint64_t read = packet.size() - headLength; read != expected) {
        packet.replace(0, headLength, ImagePacketHead(position, read));
    }
    return packet;
}

FormDescription TestFunctionForm() {
    // The window's file table: shared by every copy of this description and
    // gone only with the console, at the end of the program.
    auto files = std::make_shared<FileTable>();
    FormDescription form = MakeForm(kTestFunctionForm, u"Test Functions", 4680, 3195);
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

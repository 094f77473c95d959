#include "background_monitor/built_program.h"

#include "background_monitor/port_text.h"
#include "background_monitor/text_file.h"

#include <string_view>

namespace zenlot {
namespace {

constexpr off_t kLargestProgram = off_t{64} * 1024 * 1024;
constexpr std::size_t kPiece = std::size_t{1024} * 1024;

} // namespace

// Piece by piece, since a program may be large. It is not mapped into memory: whoever builds it
// anew may make it shorter meanwhile, which would end this program.
FoundInProgram searchProgram(const FileDescriptor& file, BinaryKind kind,
                             std::span<const std::uint16_t> ports,
                             std::span<const std::string> words) {
    const off_t size = sizeOfFile(file, kLargestProgram).value_or(0);
    std::string piece;
    std::vector<std::uint16_t> open(ports.begin(), ports.end());
    FoundInProgram found;
    for (off_t place = 0; place < size;) {
        piece.resize(kPiece);
        piece.resize(readAt(file, place, piece.data(), kPiece));
        const bool isLast = piece.size() < kPiece;
        // No number is cut in two, and what may have been cut is in the next piece as well.
        std::size_t end = piece.size();
        while (!isLast && end > kPiece - kLongestBuiltWord && isDigit(piece[end - 1]))
            --end;
        for (const std::uint16_t port :
             portsInBinary(std::string_view(piece).substr(0, end), kind, open)) {
            found.ports.push_back(port);
            std::erase(open, port);
        }
        for (const std::string& word : words) {
            if (piece.find(word) != std::string::npos)
                found.words.insert(word);
        }
        if (isLast)
            break;
        place += static_cast<off_t>(end - kLongestBuiltWord);
    }
    return found;
}

} // namespace zenlot

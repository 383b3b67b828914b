#include "record_reader.h"

#include <filesystem>
#include <system_error>

namespace vantrel {

std::unique_ptr<RecordReader> RecordReader::Open(const std::string& path, std::string& problem) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        problem = "the record " + path + " is a folder";
        return nullptr;
    }
    std::unique_ptr<RecordReader> reader(new RecordReader(path));
    if (!reader->in_) {
        problem = "cannot open the record " + path;
        return nullptr;
    }
    return reader;
}

RecordReader::RecordReader(std::string path)
    : path_(std::move(path))
    , buffer_(1 << 20) {
    // The buffer is set before the file is opened, where every library
    // takes it.
    in_.rdbuf()->pubsetbuf(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    in_.open(path_, std::ios::binary);
}

RecordReader::Next RecordReader::Stop(std::string problem) {
    stopped_ = true;
    problem_ = std::move(problem);
    return Next::Stopped;
}

RecordReader::Next RecordReader::Read(Entry& entry) {
    if (stopped_) {
        return Next::Stopped;
    }
    if (!std::getline(in_, line_)) {
        if (in_.bad()) {
            return Stop("cannot read the record " + path_ + " after line " + std::to_string(lineNumber_));
        }
        if (events_ == 0) {
            return Stop(path_ + " holds no events: not a record");
        }
        return Next::End;
    }
    ++lineNumber_;
    const bool ended = !in_.eof();  // getline found the line's end
    ReadEvent read = ReadJsonLine(line_);
    const auto where = [this] { return path_ + " line " + std::to_string(lineNumber_); };
    if (read.status == ReadEvent::Status::NotARecord) {
        if (!ended) {
            cut_ = true;
            return Stop(where() + " is cut short, as a killed session leaves it: replayed up to line " +
                        std::to_string(lineNumber_ - 1));
        }
        return Stop(where() + " is not a record: " + read.problem);
    }
    if (read.status == ReadEvent::Status::UnknownKind) {
        return Stop(where() + ": " + read.problem + "; stopped there rather than guess");
    }
    ++events_;
    entry.line = lineNumber_;
    entry.number = events_;
    entry.event = std::move(read.event);
    entry.extras = std::move(read.extras);
    return Next::Event;
}

}  // namespace vantrel

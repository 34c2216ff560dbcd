#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdio>
#include <string>

// What failed first on an output file, in the system's terms, for the caller to word.
struct OutputProblem
{
    std::string action; // "cannot write", "cannot write in", "cannot replace"
    std::string path;   // the file or directory concerned
    int error = 0;      // errno; 0 when the system gave no reason
};

// One file an export writes. It owns the stream from Open to Close; how the file is
// opened, and what makes it take its target's place, is the subclass's.
class OutputFile
{
public:
    explicit OutputFile(std::string target) : target(std::move(target)) {}
    // Closes a stream still open, unchecked: the caller has already failed.
    virtual ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Opens the file for writing; false, with Problem() set, when it cannot.
    virtual bool Open() = 0;
    bool IsOpen() const { return stream != nullptr; }
    // The open stream, for a writer that takes a FILE* (libpng).
    FILE* Stream() const { return stream; }
    // Hands `size` bytes to the stream. False once any write has failed.
    bool Write(const char* data, size_t size);
    // Closes the stream. False, with Problem() set, when a write or the close failed.
    virtual bool Close();
    // Makes the closed file take its target's place. False, with Problem() set, when it
    // cannot.
    virtual bool Commit() = 0;

    const std::string& Target() const { return target; }
    // Bytes written, once closed; -1 when the stream cannot tell (a pipe).
    off_t Size() const { return size; }
    const OutputProblem& Problem() const { return problem; }

protected:
    // Takes over a stream just opened, unbuffered: the OutputWriter buffers.
    void Adopt(FILE* opened);
    // Remembers the first failure; returns false for the caller to return.
    bool Fail(std::string action, std::string path, int error);

private:
    std::string target;
    FILE* stream = nullptr;
    off_t size = -1;
    bool failed = false;
    OutputProblem problem;
};

#include "files/AtomicFile.h"

#include "files/OutputPlace.h"

#include <algorithm>
#include <filesystem>

namespace
{
std::filesystem::path pathOf (const juce::File& file)
{
    return file.getFullPathName().toStdString();
}
} // namespace

/** What became of the stream. Outlives it, as writers store their last bytes when they die. */
struct AtomicFile::Record
{
    bool failed = false;
    juce::String reason;

    /** Size that the file must have, in bytes. */
    juce::int64 end = 0;

    void note (const juce::Result& result)
    {
        if (result.wasOk() || failed)
            return;

        failed = true;
        reason = result.getErrorMessage();
    }
};

/** Tells whether everything that a writer handed over reached the file. */
class AtomicFile::CheckedStream final : public juce::OutputStream
{
public:
    CheckedStream (const juce::File& file, std::shared_ptr<Record> recordToKeep)
        : stream (file), record (std::move (recordToKeep))
    {
        record->note (stream.getStatus());
    }

    ~CheckedStream() override { flush(); }

    void flush() override
    {
        stream.flush();
        record->note (stream.getStatus());
    }

    bool setPosition (juce::int64 position) override { return noted (stream.setPosition (position)); }
    juce::int64 getPosition() override { return stream.getPosition(); }

    bool write (const void* data, size_t byteCount) override
    {
        const auto succeeded = noted (stream.write (data, byteCount));
        record->end = std::max (record->end, stream.getPosition());
        return succeeded;
    }

private:
    bool noted (bool succeeded)
    {
        record->note (stream.getStatus());
        record->failed |= ! succeeded;
        return succeeded;
    }

    juce::FileOutputStream stream;
    std::shared_ptr<Record> record;
};

AtomicFile::AtomicFile (const juce::File& targetToUse)
    : target (OutputPlace::behindLinks (targetToUse)),
      partial (target.getSiblingFile (".solvane-" + juce::String (juce::Time::getHighResolutionTicks()) + ".part")
                   .getNonexistentSibling()),
      record (std::make_shared<Record>())
{
}

AtomicFile::~AtomicFile()
{
    partial.deleteFile();
}

std::unique_ptr<juce::OutputStream> AtomicFile::open()
{
    auto stream = std::make_unique<CheckedStream> (partial, record);

    if (record->failed)
        return {};

    // What others may not read must not lie open while it is made anew.
    takePermissionsOfTarget();
    return stream;
}

bool AtomicFile::hasFailed() const noexcept
{
    return record->failed;
}

juce::String AtomicFile::reason() const
{
    return record->reason.isNotEmpty() ? record->reason : juce::String ("the disk is full, or the file grew too large");
}

juce::Result AtomicFile::commit()
{
    // A disk that has room for a part of the last bytes reports no error for them.
    if (record->failed || partial.getSize() != record->end)
        return juce::Result::fail (reason());

    takePermissionsOfTarget();
    std::error_code error;
    std::filesystem::rename (pathOf (partial), pathOf (target), error);
    return error ? juce::Result::fail (juce::String (error.message())) : juce::Result::ok();
}

void AtomicFile::takePermissionsOfTarget() const
{
    std::error_code error;

    if (const auto existing = std::filesystem::status (pathOf (target), error); std::filesystem::exists (existing))
        std::filesystem::permissions (pathOf (partial), existing.permissions(), error);
}

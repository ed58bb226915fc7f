#include "support/LocalWebServer.h"

#include <stdexcept>

namespace
{
const auto endOfHeader = juce::String ("\r\n\r\n");

/** What a browser asks for, up to the empty line, or what there was of it. */
juce::String readRequest (juce::StreamingSocket& connection)
{
    juce::String text;
    char character = 0;

    while (! text.endsWith (endOfHeader) && connection.read (&character, 1, true) == 1)
        text += character;

    return text;
}
} // namespace

LocalWebServer::LocalWebServer()
{
    if (! listener.createListener (0, "127.0.0.1"))
        throw std::runtime_error ("no port to listen on");

    thread = std::thread ([this] { serve(); });
}

LocalWebServer::~LocalWebServer()
{
    closing = true;
    thread.join();
}

juce::String LocalWebServer::host() const
{
    return "http://127.0.0.1:" + juce::String (listener.getBoundPort());
}

juce::String LocalWebServer::header (int status, int length, const juce::String& more)
{
    return "HTTP/1.1 " + juce::String (status) + " Answer\r\nContent-Type: text/plain\r\nContent-Length: "
           + juce::String (length) + "\r\nConnection: close\r\n" + more + "\r\n";
}

void LocalWebServer::answer (const juce::String& path, const juce::String& body)
{
    const std::lock_guard lock (mutex);
    answers[path] = { header (200, static_cast<int> (body.getNumBytesAsUTF8())) + body, false };
}

void LocalWebServer::answerLiterally (const juce::String& path, const juce::String& everything)
{
    const std::lock_guard lock (mutex);
    answers[path] = { everything, true };
}

void LocalWebServer::redirect (const juce::String& path, const juce::String& target)
{
    const std::lock_guard lock (mutex);
    answers[path] = { header (302, 0, "Location: " + target + "\r\n"), false };
}

int LocalWebServer::requestsFor (const juce::String& path) const
{
    const std::lock_guard lock (mutex);
    const auto found = requests.find (path);
    return found == requests.end() ? 0 : found->second;
}

void LocalWebServer::awaitRequestFor (const juce::String& path) const
{
    while (requestsFor (path) == 0)
        std::this_thread::yield();
}

void LocalWebServer::serve()
{
    while (! closing)
    {
        // Looks up from time to time whether the test is over.
        if (listener.waitUntilReady (true, 20) != 1)
            continue;

        if (std::unique_ptr<juce::StreamingSocket> connection { listener.waitForNextConnection() })
            reply (std::move (connection));
    }
}

void LocalWebServer::reply (std::unique_ptr<juce::StreamingSocket> connection)
{
    const auto path = juce::StringArray::fromTokens (readRequest (*connection), " ", {})[1];
    Answer answer { header (404, 0), false };

    {
        const std::lock_guard lock (mutex);

        if (const auto found = answers.find (path); found != answers.end())
            answer = found->second;

        // Before whoever asked can have the whole answer.
        if (! answer.hangs)
            ++requests[path];
    }

    auto* text = answer.text.toRawUTF8();

    for (auto left = static_cast<int> (answer.text.getNumBytesAsUTF8()); left > 0;)
    {
        const auto sent = connection->write (text, left);

        if (sent <= 0)
            break;

        text += sent;
        left -= sent;
    }

    if (! answer.hangs)
        return;

    hanging.push_back (std::move (connection));

    // Now that all has been said: who waits for this request finds whoever asked in the middle of the answer.
    const std::lock_guard lock (mutex);
    ++requests[path];
}

#pragma once

#include <juce_core/juce_core.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/** A web server on this machine's loopback, at a port of its own, which answers as a test tells it. */
class LocalWebServer
{
public:
    LocalWebServer();
    ~LocalWebServer();

    /** "http://127.0.0.1:port". */
    [[nodiscard]] juce::String host() const;

    /** Sends a text with status 200 for a path such as "/news.html". */
    void answer (const juce::String& path, const juce::String& body);

    /** Sends a whole answer, header and all, as it stands. Nothing more comes, and the connection stays open: an answer
        that is cut short is one that hangs. */
    void answerLiterally (const juce::String& path, const juce::String& everything);

    void redirect (const juce::String& path, const juce::String& target);

    /** How often a path was asked for. */
    [[nodiscard]] int requestsFor (const juce::String& path) const;

    /** Waits until a path has been asked for. */
    void awaitRequestFor (const juce::String& path) const;

    [[nodiscard]] static juce::String header (int status, int length, const juce::String& more = {});

private:
    struct Answer
    {
        juce::String text;
        bool hangs = false;
    };

    void serve();
    void reply (std::unique_ptr<juce::StreamingSocket> connection);

    juce::StreamingSocket listener;
    mutable std::mutex mutex;
    std::map<juce::String, Answer> answers;
    std::map<juce::String, int> requests;
    std::vector<std::unique_ptr<juce::StreamingSocket>> hanging;
    std::atomic<bool> closing { false };
    std::thread thread;
};

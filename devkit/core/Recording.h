#pragma once

#include "devkit/core/Result.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QVariantMap>

#include <utility>
#include <vector>

class CommandTable;

/// What a host was asked for and what its plug-in did, as text: a head line, the requests in their order, after each
/// what the plug-in did until the next, and an end line. docs/recordings.md tells what the lines are.
struct Recording
{
    struct Line
    {
        int number; // counted from 1
        QVariantMap members;
    };

    /// A request, and the lines up to the next one. Of the first step the request is the head.
    struct Step
    {
        Line request;
        std::vector<Line> effects;
    };

    /// What of the effects is not compared: whole lines, their values, or parts of their values, by name.
    class LeftOut
    {
    public:
        LeftOut() = default;
        static Result<LeftOut> FromHead(const QVariant& json);

        bool Covers(const QVariantMap& effect) const { return Matches(m_lines, effect); }
        /// The effect as it is compared: without its time and without what is left out.
        QByteArray Compared(const QVariantMap& effect) const;

    private:
        static bool Matches(const std::vector<QRegularExpression>& names, const QVariantMap& effect);

        std::vector<QRegularExpression> m_lines;
        std::vector<QRegularExpression> m_values;
        std::vector<std::pair<QRegularExpression, QRegularExpression>> m_parts; // names, what of the values
    };

    // Members of the head.
    static inline const QLatin1String kElevation{"elevation"};
    static inline const QLatin1String kLeftOut{"leftOut"};
    static inline const QLatin1String kLoaded{"loaded"};
    static inline const QLatin1String kStore{"store"};
    static inline const QLatin1String kVariables{"variables"};
    /// A member of a write: another thread of the plug-in's made it.
    static inline const QLatin1String kBackground{"background"};
    /// The one member of the last line.
    static inline const QLatin1String kEnd{"end"};
    /// What a line that is no effect is made of.
    static inline const QLatin1String kRequest{"request"};

    /// What this program writes, as the first members of a head.
    static QVariantMap Format();

    /// Checks all of the text. An error names the line. A text that ends too early gives what came before, with the
    /// error in `cut`.
    static Result<Recording> Read(const QByteArray& text, const CommandTable& commands);

    /// What an effect is of: a variable's id, a key, a message of the log, else its kind ("flyer").
    static QString NameOf(const QVariantMap& effect);
    /// Effects of one source come in an order that is the same every time; how sources come among each other is not.
    enum class Source
    {
        Answers,
        Variables,
        Store,
        Flyers,
        Metrics,
        Urls,
        Log,
        Background, // of a thread of the plug-in's, at a time of its own
    };
    static constexpr Source kSources[] = {Source::Answers, Source::Variables, Source::Store, Source::Flyers,
                                          Source::Metrics, Source::Urls,      Source::Log};
    static Source SourceOf(const QVariantMap& effect);

    std::vector<Step> steps;
    LeftOut leftOut;
    QString cut;
};

#include "GeocodeMatch.h"

namespace kb {

QString GeocodeMatch::qualityText() const
{
    switch (quality) {
    case map::MatchQuality::Exact: return QStringLiteral("Exact");
    case map::MatchQuality::Close: return QStringLiteral("Close");
    case map::MatchQuality::Approximate: return QStringLiteral("Approximate");
    case map::MatchQuality::NotFound: break;
    }
    return QStringLiteral("Not found");
}

} // namespace kb

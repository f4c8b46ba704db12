#pragma once

#include <QString>

namespace kb {

// What "Send to Mapping" does, as chosen in its options screen.
enum class MappingAction { Integrate, Export };

// The place a mapped route starts or ends at.
struct MappingLocation
{
    QString name;
    QString address;
    QString city;
    QString state;
    QString zip;
};

struct MapPointOptions
{
    MappingAction action = MappingAction::Integrate;
    bool includeStarting = false;
    bool includeEnding = false;
    MappingLocation location; // the start and the end alike
    bool optimizeAndRetrieve = false;
    QString exportFile;
    int labelOption = 0; // see PushpinLabels
};

} // namespace kb

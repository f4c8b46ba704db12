#pragma once

namespace kb {

class Clock;
class DataSet;
class RecordServices;

// The values a new person starts with in Clients, set on a row the
// Clients data set is inserting: a Person_ID from the PERSON_ID counter,
// added and edited today, the agency's default city, state and postal
// code, primary phone, no organization, an ongoing weekly delivery type
// and no status. A person is a name only until given a client number.
// Returns the new Person_ID.
int setNewPersonDefaults(DataSet& clients, RecordServices& services, const Clock& clock);

} // namespace kb

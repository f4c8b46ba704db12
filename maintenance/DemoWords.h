#pragma once

#include <QStringList>

namespace kb::demo {

// The words the demo agency's people and places are made of. Names fit the
// generation that home-delivered meals mostly serve.
const QStringList& femaleFirstNames();
const QStringList& maleFirstNames();
const QStringList& lastNames();
const QStringList& streetNames();
const QStringList& streetSuffixes();
// Names of organisations that take meals in bulk for their residents.
const QStringList& organisationNames();

} // namespace kb::demo

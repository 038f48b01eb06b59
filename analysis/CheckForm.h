// What is wrong with one file by itself: its form, its words and its values.
#pragma once

#include "analysis/Model.h"

namespace corvane::check {

// Reads files one after the other.
class FileReader {
public:
    // The schema may be nothing; else the service has made it.
    FileReader(Ref<IXmlService> xml, Ref<IXmlSchemaCache> schema);

    // Reads the file's elements into the memory and says whether it takes part; reports what is wrong with its form.
    void Read(File& file, Arena& memory, Report& report) const;

private:
    Ref<IXmlService> m_xml;
    Ref<IXmlSchemaCache> m_schema;
    bool m_takesFormat; // whatever has elements and attributes of the format alone is valid
};

} // namespace corvane::check

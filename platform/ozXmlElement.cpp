#include "platform/ozXmlDocument.h"

const std::string* ozXmlElement::Attribute(std::string_view attributeName) const
{
    for (const ozXmlAttribute& attribute : attributes)
        if (attribute.name == attributeName)
            return &attribute.value;
    return nullptr;
}

const ozXmlElement* ozXmlElement::Child(std::string_view childName) const
{
    for (const ozXmlElement& child : children)
        if (child.name == childName)
            return &child;
    return nullptr;
}

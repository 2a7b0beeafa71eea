#pragma once

namespace Support
{

/// A record that counts how often its hash is invalidated.
template <typename Record>
class Watched : public Record
{
public:
    int changes = 0;

protected:
    void SetHashInvalid() override
    {
        ++changes;
        Record::SetHashInvalid();
    }
};

}  // namespace Support

#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsHost.h>

namespace oV::Roamscan
{

void RoamscanOptionsHost::setup(RoamscanOptionsCont* options)
{
    RoamscanOptions::setup(options);
}

} // namespace oV::Roamscan

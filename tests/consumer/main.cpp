#include <commands/CommandData.h>

int main()
{
    return CommandData::RETRY_ERROR_CODE == -1 ? 0 : 1;
}

#include "catalogue/s3dm_handlers.h"

namespace qvx::catalogue {

std::map<std::string, CS3dmHandler>& S3dmHandlers() {
    static std::map<std::string, CS3dmHandler> handlers;
    return handlers;
}

}  // namespace qvx::catalogue

#include "PngFile.h"

#include "Error.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkUnsignedCharArray.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

namespace Export {

// VTK writes into memory: of a full disk it would not tell.
void writePng(vtkImageData& image, std::filesystem::path const& file)
{
    vtkNew<vtkPNGWriter> writer;
    writer->SetInputData(&image);
    writer->SetCompressionLevel(9);
    writer->WriteToMemoryOn();
    writer->Write();
    vtkUnsignedCharArray& bytes = *writer->GetResult();
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<char const*>(bytes.GetPointer(0)), bytes.GetNumberOfValues());
    stream.close();
    if (!stream)
        throw Error(std::string("The file cannot be written: ") + std::strerror(errno) + ".");
}

} // namespace Export

/* Import declarations for Visual C++, whose compiler makes smart pointers and wrapper functions in the
   namespace MXOVDocViewLib from the type library. Not tried yet: other compilers lack the directive. */
#ifndef MXOVIMPORT_H
#define MXOVIMPORT_H

#ifndef _MSC_VER
#error "mxovimport.h needs Visual C++; include MXOVDocView.h instead"
#endif

#import "../typelib/MXOVDocView.tlb" named_guids

#endif

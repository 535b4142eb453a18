// The module "greeting": a class of objects, and a function by which programs get one.
#include "greeting.h"

// A class of a module is like that of a program, but for the module that its record names: the module is not unloaded
// as long as an object of the class lives.
typedef struct GREETING GREETING;
ZU_STDFUNCS_DECLARE( GREETING, greeting )

struct GREETING {
    ZU_OBJ obj;
    ZU_STRING *name; // never null
};

static void greetingFree( ZU_OBJ *thisObj )
{
    GREETING *greeting = greetingFrom( thisObj );
    ZU_REF_RELEASE( greeting->name );
    ZU_REF_POISON( greeting->name );
}
static ZU_STRING *greetingText( ZU_OBJ *thisObj )
{
    return zuStringCreateFromFormatCstr( "GREETING(Hello, %s!)", -1, greetingFrom( thisObj )->name );
}
static ZU_SORT zu___sort_GREETING =
    ZU___SORT_INITIALIZER( "GREETING", &greeting___module, greetingFree, NULL, greetingText );
ZU___STDFUNCS( GREETING, greeting )

static void *greetingRun( void *argument1, void *argument2 )
{
    ZU_ASSERT( argument1 );
    ZU_ASSERT( !argument2 );
    GREETING *greeting = (GREETING *)zu___ObjCreate( sizeof( GREETING ), greetingSort() );
    greeting->name = zuStringRetain( (ZU_STRING *)argument1 );
    return greetingObj( greeting );
}

// Called when all that the module depends on is loaded; false refuses to be loaded.
static ZU_BOOL greetingLoad( void )
{
    return ZU_TRUE;
}

// Name, products, description, version, the modules that it depends on, those that extend it, what it was built for, and
// the five functions; each of them may be null.
ZU___MODULE_DEFINE( greeting, ZU___MODULE_ANY_PRODUCT, "Greets whoever is named", "1.0", "", "", "any product",
                    greetingLoad, NULL, NULL, NULL, greetingRun )
